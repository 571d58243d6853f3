// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/WindowPlaces.h"

#include "devices/Literals.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>

#include <algorithm>

namespace corvane {

namespace {

/// Goes through what of a window is remembered besides its place: the splitters and, by their
/// titles, the columns whose width the user chooses.
template <class OnSplitter, class OnColumn>
void forEachPart(const QWidget &window, OnSplitter onSplitter, OnColumn onColumn)
{
    for (QSplitter *splitter : window.findChildren<QSplitter *>()) {
        if (!splitter->objectName().isEmpty() && splitter->window() == &window)
            onSplitter(u"splitter/"_s + splitter->objectName(), *splitter);
    }
    for (QHeaderView *header : window.findChildren<QHeaderView *>()) {
        const QString table = header->parent()->objectName();
        if (table.isEmpty() || header->orientation() != Qt::Horizontal ||
            header->window() != &window)
            continue;
        for (int column = 0; column < header->count(); ++column) {
            const bool isLast = column + 1 == header->count() && header->stretchLastSection();
            QString title = header->model()->headerData(column, Qt::Horizontal).toString();
            if (!title.isEmpty() && !isLast && !header->isSectionHidden(column))
                onColumn(u"column/%1/%2"_s.arg(table, title.replace(u'/', u'|')), *header, column);
        }
    }
}

/// What one window needs to open in its place.
class Place : public QObject
{
public:
    Place(QWidget &window, QSettings *settings)
        : QObject(&window)
        , m_window(window)
        , m_settings(settings)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (!m_window.isWindow()) // it was made before its parent
            return false;
        if (event->type() == QEvent::Show && !std::exchange(m_isShown, true)) {
            takeWantedSize();
            restore();
            fit();
        } else if (event->type() == QEvent::Paint && !std::exchange(m_isPainted, true)) {
            QMetaObject::invokeMethod(this, &Place::grow, Qt::QueuedConnection);
        } else if (m_isShown && !m_isFramed && m_window.frameGeometry() != m_window.geometry()) {
            // The window manager gives the frame when it likes.
            m_isFramed = true;
            QMetaObject::invokeMethod(this, &Place::fit, Qt::QueuedConnection);
        }
        if (m_isShown && event->type() == QEvent::Hide && !event->spontaneous())
            save();
        return false;
    }

private:
    [[nodiscard]] bool isRemembered() const
    {
        return m_settings != nullptr && !m_window.objectName().isEmpty() &&
               !m_window.inherits("QMessageBox") && !m_window.inherits("QFileDialog");
    }

    /// The toolkit gives a window that asks for much only two thirds of the screen.
    void takeWantedSize()
    {
        if (!m_window.testAttribute(Qt::WA_Resized))
            m_window.resize(m_window.size().expandedTo(m_window.sizeHint()));
    }

    /// The texts of a page may take more than it asked for before they were painted.
    void grow()
    {
        const auto *page = m_window.findChild<QScrollArea *>(QString(), Qt::FindDirectChildrenOnly);
        if (page == nullptr || m_isRestored)
            return;
        m_window.resize(m_window.width(), m_window.height() + page->verticalScrollBar()->maximum());
        fit();
    }

    void restore()
    {
        if (!isRemembered())
            return;
        m_settings->beginGroup(u"windows/"_s + m_window.objectName());
        m_isRestored = m_window.restoreGeometry(m_settings->value(u"geometry"_s).toByteArray());
        forEachPart(
            m_window,
            [this](const QString &key, QSplitter &splitter) {
                splitter.restoreState(m_settings->value(key).toByteArray());
            },
            [this](const QString &key, QHeaderView &header, int column) {
                constexpr int widest = 4000;
                const int width = m_settings->value(key).toInt();
                if (width >= header.minimumSectionSize() && width <= widest)
                    header.resizeSection(column, width);
            });
        m_settings->endGroup();
    }

    void save()
    {
        if (!isRemembered())
            return;
        m_settings->beginGroup(u"windows/"_s + m_window.objectName());
        m_settings->setValue(u"geometry"_s, m_window.saveGeometry());
        forEachPart(
            m_window,
            [this](const QString &key, const QSplitter &splitter) {
                m_settings->setValue(key, splitter.saveState());
            },
            [this](const QString &key, const QHeaderView &header, int column) {
                m_settings->setValue(key, header.sectionSize(column));
            });
        m_settings->endGroup();
    }

    void fit()
    {
        const QRect room = m_window.screen()->availableGeometry();
        if (m_window.isMaximized() || m_window.isFullScreen())
            return;
        const QRect frame = m_window.frameGeometry();
        const QRect wanted = WindowPlaces::fitted(frame, room);
        if (wanted.size() != frame.size())
            m_window.resize(wanted.size() - (frame.size() - m_window.size()));
        if (wanted.topLeft() != frame.topLeft())
            m_window.move(wanted.topLeft());
    }

    QWidget &m_window;
    QSettings *const m_settings;
    bool m_isShown = false;
    bool m_isRestored = false;
    bool m_isPainted = false;
    bool m_isFramed = false;
};

/// Tool tips, menus and the lists of boxes see to themselves.
bool isWindow(const QWidget &widget)
{
    return widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog;
}

} // namespace

WindowPlaces::WindowPlaces(QSettings *settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{
}

void WindowPlaces::install(QSettings *settings)
{
    QCoreApplication *application = QCoreApplication::instance();
    application->installEventFilter(new WindowPlaces(settings, application));
}

bool WindowPlaces::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Polish && watched->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(watched);
        if (isWindow(*widget))
            new Place(*widget, m_settings);
    }
    return false;
}

QRect WindowPlaces::fitted(const QRect &frame, const QRect &room)
{
    const QSize size = frame.size().boundedTo(room.size());
    const QSize spare = room.size() - size;
    const QPoint from = frame.topLeft() - room.topLeft();
    return {room.topLeft() + QPoint(std::clamp(from.x(), 0, spare.width()),
                                    std::clamp(from.y(), 0, spare.height())),
            size};
}

} // namespace corvane
