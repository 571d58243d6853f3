// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/TextGrid.h"

#include "tests/support/Testing.h"

using namespace corvane;

namespace {

using Verdict = GridModel::Verdict;

/// A grid of 4 rows and 3 columns, each cell named after its place.
class Grid : public testing::Test
{
protected:
    Grid()
    {
        m_cells.setTable(TextTable(3, 3));
        m_cells.appendRow();
        for (int at = 0; at < 12; ++at)
            m_cells.setText(at / 3, at % 3, u"%1.%2"_s.arg(at / 3).arg(at % 3));
    }

    [[nodiscard]] QString texts() const
    {
        QStringList all;
        for (int at = 0; at < m_cells.table().rowCount() * 3; ++at)
            all.append(m_cells.text(at / 3, at % 3));
        return all.join(u' ');
    }

    GridModel m_cells;
    TextGrid m_grid{m_cells};
};

} // namespace

TEST_F(Grid, EachCellHoldsItsTextWhateverItsNeighboursDo)
{
    m_cells.setText(2, 1, u"a longer text"_s);
    m_cells.setText(2, 0, QString());
    m_cells.setText(2, 2, u"\u20ac"_s);
    m_cells.setText(9, 0, u"outside"_s);
    m_cells.setText(0, -1, u"outside"_s);
    EXPECT_EQ(texts(), u"0.0 0.1 0.2 1.0 1.1 1.2  a longer text \u20ac 3.0 3.1 3.2");
    m_cells.removeRow(1);
    m_cells.appendRow();
    m_cells.setText(3, 1, u"new"_s);
    EXPECT_EQ(texts(), u"0.0 0.1 0.2  a longer text \u20ac 3.0 3.1 3.2  new ");
    for (int column = 0; column < 3; ++column)
        m_cells.clearColumn(column);
    EXPECT_EQ(texts().trimmed(), u"0.0 0.1 0.2");
}

TEST_F(Grid, AHugeTailIsKeptWholeAndShownInPart)
{
    m_cells.replaceTail(1, 1, 99, "\xff"_L1);
    EXPECT_EQ(m_cells.text(1, 1), u"1.1\u00ff");
    m_cells.replaceTail(1, 1, 0, QLatin1StringView(QByteArray(10'000'000, 'x')));
    EXPECT_EQ(m_cells.textLength(1, 1), 10'000'000);
    EXPECT_LE(m_grid.model()->index(0, 1).data().toString().size(), 1000);
}

TEST_F(Grid, RowZeroIsTheHeaderAndAsCurrentRowNothingIsSelected)
{
    EXPECT_EQ(m_grid.model()->headerData(1, Qt::Horizontal).toString(), u"0.1");
    QSignalSpy changed(&m_cells, &GridModel::currentCellSet);
    m_cells.setCurrentCell(2, 1);
    EXPECT_EQ(m_grid.currentIndex().row(), 1);
    m_cells.setCurrentCell(4, 1);
    m_cells.setCurrentCell(1, 3);
    EXPECT_EQ(m_cells.currentRow(), 2);
    m_cells.setCurrentCell(0, 2);
    EXPECT_FALSE(m_grid.currentIndex().isValid());
    EXPECT_EQ(changed.count(), 2);
    m_cells.setCurrentCell(3, 0);
    m_cells.removeRow(3);
    EXPECT_EQ(m_cells.currentRow(), 2);
}

TEST_F(Grid, VerdictsAreToldApartByReadableColoursAndMoveWithTheirRows)
{
    for (int row = 1; row <= 3; ++row)
        m_cells.setText(row, 2, u"MMMM"_s);
    m_cells.setVerdict(2, 2, Verdict::Passed);
    m_cells.setVerdict(3, 2, Verdict::Failed);
    m_cells.setMarkedRow(1);
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
    m_cells.removeRow(1);
    EXPECT_EQ(m_cells.verdict(1, 2), Verdict::Passed);
    EXPECT_EQ(m_cells.verdict(2, 2), Verdict::Failed);
    m_cells.setText(1, 2, u"x"_s);
    m_cells.clearColumn(2);
    EXPECT_EQ(m_cells.verdict(1, 2), Verdict::None);
    EXPECT_EQ(m_cells.verdict(2, 2), Verdict::None);
}
