#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tapalong {

/// One small private file that is only ever replaced as a whole: readers find the old content or the new one, also
/// after a crash or on a full disk.
class SettingsFile {
public:
    enum class Found { nothing, content, somethingUnreadable };
    struct Reading {
        Found found = Found::nothing;
        QByteArray content{};
    };

    explicit SettingsFile(QString path) : m_path(std::move(path)) {}

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] QString folder() const;

    [[nodiscard]] Reading read() const;

    /// Makes the folder where it is missing. False when it failed; then the old content is still there.
    [[nodiscard]] bool write(const QByteArray& content) const;

    /// Gives the file another name beside it, which no earlier file has. None when it cannot be renamed.
    [[nodiscard]] std::optional<QString> setAside() const;

private:
    QString m_path;
};

} // namespace tapalong
