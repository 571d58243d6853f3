#include "windows/widgets/Accessibility.h"

#include "windows/widgets/Led.h"
#include "windows/widgets/ResponseView.h"

#include <QAccessibleWidget>

namespace corvane {

namespace {

/// A reply of megabytes would stall a screen reader.
constexpr qsizetype longestValue = 32'000;

class LedInterface : public QAccessibleWidget
{
public:
    explicit LedInterface(Led &led)
        : QAccessibleWidget(&led, QAccessible::Indicator)
        , m_led(led)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_led.text() : QAccessibleWidget::text(kind);
    }

private:
    const Led &m_led;
};

class ResponseInterface : public QAccessibleWidget
{
public:
    explicit ResponseInterface(ResponseView &view)
        : QAccessibleWidget(&view, QAccessible::EditableText)
        , m_view(view)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? QString::fromLatin1(m_view.bytes().first(
                                                std::min(m_view.bytes().size(), longestValue)))
                                          : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }

private:
    const ResponseView &m_view;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *led = qobject_cast<Led *>(object))
        return new LedInterface(*led);
    if (auto *view = qobject_cast<ResponseView *>(object))
        return new ResponseInterface(*view);
    return nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace corvane
