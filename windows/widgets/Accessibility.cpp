// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/Accessibility.h"

#include "devices/Literals.h"
#include "windows/widgets/Led.h"
#include "windows/widgets/ResponseView.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QTextDocumentFragment>

namespace corvane {

namespace {

/// A reply of megabytes would stall a screen reader; the newest of it is read.
constexpr qsizetype longestValue = 32'000;

QString captioned(const QString &caption, const QString &value)
{
    if (caption.isEmpty() || value.isEmpty() || caption == value)
        return caption.isEmpty() ? value : caption;
    return u"%1: %2"_s.arg(caption, value);
}

/// What our own controls have in common: a text that can be read in parts, but has no cursor and no
/// selection of the reader's.
class ReadableInterface : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? shown() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    [[nodiscard]] int characterCount() const override { return static_cast<int>(shown().size()); }
    [[nodiscard]] QString text(int from, int to) const override
    {
        const QString all = shown();
        const qsizetype first = std::clamp<qsizetype>(from, 0, all.size());
        const qsizetype end = to < 0 ? all.size() : std::clamp<qsizetype>(to, first, all.size());
        return all.sliced(first, end - first);
    }
    void selection(int, int *from, int *to) const override { *from = *to = 0; }
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *from, int *to) const override
    {
        *from = 0;
        *to = characterCount();
        return {};
    }

protected:
    /// All that can be read.
    [[nodiscard]] virtual QString shown() const = 0;
};

class LedInterface : public ReadableInterface
{
public:
    explicit LedInterface(Led &led)
        : ReadableInterface(&led, QAccessible::StaticText)
        , m_led(led)
    {
    }
    using ReadableInterface::text;

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? captioned(m_led.accessibleName(), m_led.text())
                                         : ReadableInterface::text(kind);
    }

protected:
    [[nodiscard]] QString shown() const override { return m_led.text(); }

private:
    const Led &m_led;
};

class ResponseInterface : public ReadableInterface
{
public:
    explicit ResponseInterface(ResponseView &view)
        : ReadableInterface(&view, QAccessible::EditableText)
        , m_view(view)
    {
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = ReadableInterface::state();
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }

protected:
    [[nodiscard]] QString shown() const override
    {
        return QString::fromLatin1(
            m_view.bytes().last(std::min(m_view.bytes().size(), longestValue)));
    }

private:
    const ResponseView &m_view;
};

/// A label that has a name of its own is a reading: both are told, "Status: Port Open".
class LabelInterface : public ReadableInterface
{
public:
    explicit LabelInterface(QLabel &label)
        : ReadableInterface(&label, QAccessible::StaticText)
        , m_label(label)
    {
    }
    using ReadableInterface::text;

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name)
            return ReadableInterface::text(kind);
        return captioned(m_label.accessibleName(), shown());
    }

protected:
    [[nodiscard]] QString shown() const override
    {
        const QString text = m_label.text();
        if (m_label.textFormat() == Qt::PlainText || !Qt::mightBeRichText(text))
            return m_label.buddy() ? QString(text).remove(u'&') : text;
        return QTextDocumentFragment::fromHtml(text).toPlainText();
    }

private:
    const QLabel &m_label;
};

/// The toolkit's own calls a box by what is chosen in it, whatever its name: both are told,
/// "Baud rate: 9600".
class BoxInterface : public QAccessibleWidget
{
public:
    explicit BoxInterface(QComboBox &box)
        : QAccessibleWidget(&box, QAccessible::ComboBox)
        , m_box(box)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return captioned(m_box.accessibleName(), m_box.currentText());
        return kind == QAccessible::Value ? m_box.currentText() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.hasPopup = true;
        state.editable = m_box.isEditable();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override { return {showMenuAction()}; }
    void doAction(const QString &action) override
    {
        if (action == showMenuAction() && m_box.isEnabled())
            m_box.showPopup();
    }

private:
    QComboBox &m_box;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *led = qobject_cast<Led *>(object))
        return new LedInterface(*led);
    if (auto *view = qobject_cast<ResponseView *>(object))
        return new ResponseInterface(*view);
    if (auto *label = qobject_cast<QLabel *>(object))
        return new LabelInterface(*label);
    if (auto *box = qobject_cast<QComboBox *>(object))
        return new BoxInterface(*box);
    return nullptr;
}

/// Tells readers of a label whose text is another one: the toolkit keeps it to itself where the
/// label has a name. At most once a repaint.
class LabelTeller : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || !QAccessible::isActive())
            return false;
        auto *label = qobject_cast<QLabel *>(watched);
        constexpr const char *told = "toldText";
        if (label != nullptr && !label->accessibleName().isEmpty() &&
            label->property(told).toString() != label->text()) {
            label->setProperty(told, label->text());
            QAccessibleEvent changed(label, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&changed);
        }
        return false;
    }
};

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
    const QString name = u"labelTeller"_s;
    if (qApp->findChild<QObject *>(name, Qt::FindDirectChildrenOnly) == nullptr) {
        auto *teller = new LabelTeller(qApp);
        teller->setObjectName(name);
        qApp->installEventFilter(teller);
    }
}

} // namespace corvane
