#include "windows/widgets/TextGrid.h"

#include "tests/support/Testing.h"

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Verdict = TextGrid::Verdict;

/// A grid of 4 rows and 3 columns, each cell named after its place.
class Grid : public testing::Test
{
protected:
    Grid()
    {
        m_grid.setColCount(3);
        m_grid.setRowCount(4);
        for (int at = 0; at < 12; ++at)
            m_grid.setText(at / 3, at % 3, u"%1.%2"_s.arg(at / 3).arg(at % 3));
    }

    QString texts() const
    {
        QStringList all;
        for (int at = 0; at < m_grid.rowCount() * m_grid.colCount(); ++at)
            all.append(m_grid.text(at / m_grid.colCount(), at % m_grid.colCount()));
        return all.join(u' ');
    }

    TextGrid m_grid;
};

} // namespace

TEST_F(Grid, EachCellHoldsItsTextWhateverItsNeighboursDo)
{
    m_grid.setText(2, 1, u"a longer text"_s);
    m_grid.setText(2, 0, QString());
    m_grid.setText(2, 2, u"\u20ac"_s);
    m_grid.setText(9, 0, u"outside"_s);
    m_grid.setText(0, -1, u"outside"_s);
    EXPECT_EQ(texts(), u"0.0 0.1 0.2 1.0 1.1 1.2  a longer text \u20ac 3.0 3.1 3.2");
    m_grid.setColCount(2);
    m_grid.removeRow(1);
    m_grid.setRowCount(4);
    m_grid.setText(3, 1, u"new"_s);
    EXPECT_EQ(texts(), u"0.0 0.1  a longer text 3.0 3.1  new");
    m_grid.clear();
    EXPECT_EQ(texts().trimmed(), u"0.0 0.1");
}

TEST_F(Grid, AHugeTailIsKeptWholeAndShownInPart)
{
    m_grid.replaceTail(1, 1, 99, "\xff"_L1);
    EXPECT_EQ(m_grid.text(1, 1), u"1.1\u00ff");
    m_grid.replaceTail(1, 1, 0, QLatin1StringView(QByteArray(10'000'000, 'x')));
    EXPECT_EQ(m_grid.textLength(1, 1), 10'000'000);
    EXPECT_LE(m_grid.model()->index(0, 1).data().toString().size(), 1000);
}

TEST_F(Grid, RowZeroIsTheHeaderAndAsCurrentRowNothingIsSelected)
{
    EXPECT_EQ(m_grid.model()->headerData(1, Qt::Horizontal).toString(), u"0.1");
    QSignalSpy changed(&m_grid, &TextGrid::currentCellChanged);
    m_grid.setCurrentCell(2, 1);
    EXPECT_EQ(m_grid.currentIndex().row(), 1);
    m_grid.setCurrentCell(4, 1);
    m_grid.setCurrentCell(1, 3);
    EXPECT_EQ(m_grid.currentRow(), 2);
    m_grid.setCurrentCell(0, 2);
    EXPECT_FALSE(m_grid.currentIndex().isValid());
    EXPECT_EQ(changed.count(), 2);
    m_grid.setCurrentCell(3, 0);
    m_grid.removeRow(3);
    EXPECT_EQ(m_grid.currentRow(), 2);
}

TEST_F(Grid, VerdictsAreToldApartByReadableColoursAndMoveWithTheirRows)
{
    for (int row = 1; row <= 3; ++row)
        m_grid.setText(row, 2, u"MMMM"_s);
    m_grid.setVerdict(2, 2, Verdict::Passed);
    m_grid.setVerdict(3, 2, Verdict::Failed);
    m_grid.setMarkedRow(1);
    QList<QRgb> papers;
    for (int row = 1; row <= 3; ++row) {
        const QImage cell = m_grid.viewport()->grab(m_grid.cellRect(row, 2)).toImage();
        papers.append(cell.pixel(1, 1));
        int darkest = 255;
        for (int x = 0; x < cell.width() - 1; ++x) // not the line at its right
            darkest = std::min(darkest, qGray(cell.pixel(x, cell.height() / 2)));
        EXPECT_GT(qGray(papers.back()) - darkest, 120) << row;
    }
    EXPECT_TRUE(papers[0] != papers[1] && papers[1] != papers[2] && papers[0] != papers[2]);
    m_grid.removeRow(1);
    EXPECT_EQ(m_grid.verdict(1, 2), Verdict::Passed);
    EXPECT_EQ(m_grid.verdict(2, 2), Verdict::Failed);
    m_grid.setText(1, 2, u"x"_s);
    m_grid.clearColumn(2);
    EXPECT_EQ(m_grid.verdict(1, 2), Verdict::None);
    EXPECT_EQ(m_grid.verdict(2, 2), Verdict::None);
}
