// SPDX-License-Identifier: GPL-3.0-or-later
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
    Q_PROPERTY(QString text READ text)

public:
    /// At most one repaint in this many ms.
    static constexpr int repaintIntervalMs = 75;

    /// The text must outlive the view.
    explicit ResponseView(const ResponseText &text, QWidget *parent = nullptr);

    [[nodiscard]] QString text() const { return QString::fromLatin1(m_text.bytes()); }
    [[nodiscard]] const QByteArray &bytes() const { return m_text.bytes(); }
    /// The text is another one, or has changed at its end and maybe dropped its oldest part.
    void textReplaced();
    void textAppended();

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
    void tellReaders();
    void updateScrollBar();
    void drawRow(QPainter &painter, qsizetype row, int y) const;

    const ResponseText &m_text;
    qsizetype m_dropped = 0; ///< of the text, as followed
    QTimer m_repaint;
    QString m_told; ///< what screen readers know of it
    /// The selection runs from the anchor to the cursor, both byte positions.
    qsizetype m_anchor = 0;
    qsizetype m_cursor = 0;
};

} // namespace corvane
