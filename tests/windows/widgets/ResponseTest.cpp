// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ResponseText.h"
#include "tests/support/Testing.h"
#include "windows/widgets/ResponseView.h"

#include <random>

using namespace corvane;

namespace {

/// The rule as it reads: the whole text is searched at each arrival.
QByteArray searchedWhole(QByteArray text, const QByteArray &arrival,
                         const ResponseText::Cleaning &cleaning)
{
    text += arrival;
    if (cleaning.lineEnds)
        text.replace("\r", "").replace("\n", "");
    return text.replace(cleaning.sequence, "");
}

} // namespace

TEST(ResponseText, CleansAsIfTheWholeTextWereSearchedAtEachArrival)
{
    std::mt19937 random(20);
    const QByteArray alphabet = "<05:\r\nA";
    for (int round = 0; round < 400; ++round) {
        ResponseText text;
        QByteArray expected;
        QByteArray mirrored; // built from the kept bytes and the tails only
        const ResponseText::Cleaning cleaning = round % 2 == 0
                                                    ? ResponseText::Cleaning{true, "<05:"}
                                                    : ResponseText::Cleaning{false, "\r\n"};
        for (int arrivals = 0; arrivals < 30; ++arrivals) {
            QByteArray arrival;
            for (auto left = random() % 9; left > 0; --left)
                arrival += alphabet[static_cast<qsizetype>(random() % 7)];
            expected = searchedWhole(expected, arrival, cleaning);
            const qsizetype keep = text.append(arrival, cleaning);
            mirrored.truncate(keep);
            mirrored += text.bytes().sliced(keep);
            ASSERT_EQ(text.bytes(), expected) << "round " << round;
            ASSERT_EQ(mirrored, expected) << "round " << round;
        }
    }
}

TEST(ResponseText, KeepsTheNewestAndCountsPositionsFromTheBeginning)
{
    const QByteArray arrivals[] = {"0123<05:4567", "<<0505::", QByteArray(300, '\n'), "89\n",
                                   QByteArray(250, 'x') + "<05:"};
    ResponseText text(100);
    QByteArray whole;
    for (int round = 0; round < 200; ++round) {
        const QByteArray &arrival = arrivals[round % 4 == 3 ? round / 4 % 5 : round % 4];
        whole.truncate(text.append(arrival, {true, "<05:"}));
        whole.resize(std::max(whole.size(), text.dropped())); // an arrival longer than the bound
        whole += text.bytes().sliced(whole.size() - text.dropped());
        ASSERT_TRUE(whole.endsWith(text.bytes()) && text.bytes().size() <= 125) << round;
        ASSERT_TRUE(text.dropped() == 0 || text.bytes().size() >= 100 - 4) << round;
    }
    EXPECT_GT(text.dropped(), 1000);
    text.assign("new");
    EXPECT_EQ(text.dropped(), 0);
    // What only a removal puts together goes with the next arrival, but not from any distance.
    text = ResponseText();
    text.append("<0<05:5:" + QByteArray(ResponseText::mostRevisited, 'x'), {false, "<05:"});
    EXPECT_TRUE(text.bytes().startsWith("<05:x"));
    text.append("", {false, "<05:"});
    EXPECT_TRUE(text.bytes().startsWith("<05:x"));
}

TEST(ResponseView, KeepsAllByteValuesAndOffersThemAsText)
{
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    ResponseText text;
    ResponseView view(text);
    text.append(all, {.lineEnds = false, .sequence = "\r\n"});
    view.textAppended();
    EXPECT_EQ(view.bytes(), all);
    EXPECT_EQ(view.property("text").toString(), QString::fromLatin1(all));
    view.resize(300, 100);
    EXPECT_FALSE(view.grab().isNull());
}

TEST(ResponseView, SelectsWithMouseAndKeysAndCopiesTheTextItself)
{
    ResponseText text;
    ResponseView view(text);
    view.resize(600, 100);
    view.show();
    text.assign("MAKER,MODEL\x01,7");
    view.textReplaced();
    const int pitch = view.fontMetrics().horizontalAdvance(u'0');
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, QPoint(4 + pitch * 2, 10));
    EXPECT_EQ(view.selectedText(), u"MAKER");
    QKeyEvent wanted(QEvent::ShortcutOverride, Qt::Key_Insert, Qt::ControlModifier);
    QApplication::sendEvent(&view, &wanted);
    EXPECT_TRUE(wanted.isAccepted()) << "no shortcut of the window takes a key to copy";
    QTest::keySequence(&view, QKeySequence::SelectAll);
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), u"MAKER,MODEL\x01,7"_s);
    text.assign("A");
    view.textReplaced();
    EXPECT_EQ(view.selectedText(), QString());
}
