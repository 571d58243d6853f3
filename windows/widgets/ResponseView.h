#pragma once

#include "core/channels/ResponseText.h"

#include <QAbstractScrollArea>
#include <QTimer>

namespace corvane {

/// Shows a reply in a fixed-pitch font, broken at the right edge, however long it is: only the
/// visible rows are drawn, by arithmetic, and at a fixed rate however fast the text grows. The text
/// can be selected and copied, not typed into. A control character shows as a dot and is copied as
/// it is.
class ResponseView : public QAbstractScrollArea
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    /// At most one repaint in this many ms.
    static constexpr int repaintIntervalMs = 75;

    explicit ResponseView(QWidget *parent = nullptr, qsizetype mostKept = ResponseText::mostKept);

    [[nodiscard]] QString text() const { return QString::fromLatin1(m_text.bytes()); }
    [[nodiscard]] const QByteArray &bytes() const { return m_text.bytes(); }
    /// How much of the oldest text was dropped since the text was last replaced.
    [[nodiscard]] qsizetype dropped() const { return m_text.dropped(); }
    /// Replaces the text. A character beyond Latin-1 becomes "?".
    void setText(const QString &text) { setBytes(text.toLatin1()); }
    void setBytes(const QByteArray &bytes);
    /// Appends an arrival as ResponseText::append does, and returns what that returns.
    qsizetype append(QByteArrayView arrival, const ResponseText::Cleaning &cleaning);

    [[nodiscard]] QString selectedText() const;
    void selectAll();
    void copy() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    [[nodiscard]] qreal pitch() const;
    [[nodiscard]] qsizetype columns() const;
    [[nodiscard]] int visibleRows() const;
    [[nodiscard]] qsizetype positionAt(QPoint point) const;
    [[nodiscard]] std::pair<qsizetype, qsizetype> selection() const;
    [[nodiscard]] QSize sizeOfRows(int rows) const;
    void followDropped(qsizetype dropped);
    void textChanged();
    void updateScrollBar();
    void drawRow(QPainter &painter, qsizetype row, int y) const;

    ResponseText m_text;
    QTimer m_repaint;
    /// The selection runs from the anchor to the cursor, both byte positions.
    qsizetype m_anchor = 0;
    qsizetype m_cursor = 0;
};

} // namespace corvane
