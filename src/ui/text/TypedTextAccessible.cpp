#include "ui/text/TypedTextAccessible.h"

#include "ui/text/TypedTextItem.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QCoreApplication>
#include <QQuickWindow>

namespace tapalong {

namespace {

class TypedTextAccessible final : public QAccessibleObject {
public:
    explicit TypedTextAccessible(TypedTextItem* item) : QAccessibleObject(item) {}

    [[nodiscard]] QAccessibleInterface* parent() const override {
        const QQuickWindow* window = item().window();
        for (QQuickItem* above = item().parentItem(); above != nullptr; above = above->parentItem()) {
            if (auto* found = QAccessible::queryAccessibleInterface(above)) {
                return found;
            }
        }
        return window == nullptr ? nullptr
                                 : QAccessible::queryAccessibleInterface(const_cast<QQuickWindow*>(window)); // NOLINT
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description) {
            return QCoreApplication::translate("TypedText", "Typed text");
        }
        return kind == QAccessible::Name ? item().text() : QString();
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.multiLine = true;
        state.invisible = !item().isVisible();
        return state;
    }
    [[nodiscard]] QRect rect() const override {
        const QPointF corner = item().mapToGlobal(QPointF(0, item().viewportY()));
        const double height = item().viewportHeight() > 0 ? item().viewportHeight() : item().height();
        return QRectF(corner, QSizeF(item().width(), height)).toRect();
    }

private:
    [[nodiscard]] TypedTextItem& item() const { return *static_cast<TypedTextItem*>(object()); }
};

QAccessibleInterface* make(const QString& /*className*/, QObject* object) {
    auto* item = qobject_cast<TypedTextItem*>(object);
    return item == nullptr ? nullptr : new TypedTextAccessible(item);
}

} // namespace

void installTypedTextAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    (void)installed;
}

} // namespace tapalong
