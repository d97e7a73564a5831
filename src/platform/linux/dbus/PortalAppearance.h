#pragma once

#include "platform/desktop/AppearanceSource.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <cstdint>

class QDBusPendingCallWatcher;

namespace tapalong {

/// The desktop's own word on dark or light, from its portal; followed while the program runs. The toolkit's colours
/// do not follow it. Where there is no portal, or it has no preference, those colours decide.
class PortalAppearance final : public QObject, public AppearanceSource {
    Q_OBJECT

public:
    /// Waits a moment for the answer, so that the first picture has the right colours; a slow one comes later as a
    /// change.
    explicit PortalAppearance(const QDBusConnection& bus);

    /// On the bus of the login session; without one nothing is asked.
    PortalAppearance();

    [[nodiscard]] std::optional<Appearance> appearance() const override;

private:
    /// As the portal numbers them.
    enum class ColorScheme : std::uint32_t { noPreference, dark, light };

    void ask(const QDBusConnection& bus);
    void handleReply(QDBusPendingCallWatcher* watcher);
    void take(const QVariant& value);
    Q_SLOT void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

    ColorScheme m_scheme = ColorScheme::noPreference;
};

} // namespace tapalong
