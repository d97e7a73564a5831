#pragma once

#include "platform/UserDefaults.h"
#include "platform/desktop/SettingsFile.h"

#include <QJsonObject>

namespace tapalong {

class NoticeBoard;

/// The defaults as one JSON object in one file, which a parent may edit while the program does not run. What the
/// program does not know is kept. Of two running copies the last writer wins.
class JsonUserDefaults final : public UserDefaults {
public:
    /// Reads the file. Troubles go to `notices`, which must outlive this object.
    JsonUserDefaults(const QString& path, NoticeBoard& notices);

    /// Where this user's settings are kept.
    [[nodiscard]] static QString standardPath();

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void setValue(std::string_view key, DefaultsValue value) override;

private:
    void load();
    void reportDamage();
    void reportFailedWrite();

    SettingsFile m_file;
    NoticeBoard& m_notices;
    QJsonObject m_values;
};

} // namespace tapalong
