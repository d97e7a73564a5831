#include "platform/desktop/SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace tapalong {

namespace {

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
constexpr int setAsideNames = 1000;

bool makePrivateFolder(const QString& folder) {
    const QFileInfo wanted(folder);
    if (wanted.isDir()) {
        return true;
    }
    const QDir parent = wanted.dir();
    return parent.mkpath(QStringLiteral(".")) && parent.mkdir(wanted.fileName(), ownerOnly | QFile::ExeOwner);
}

} // namespace

QString SettingsFile::folder() const {
    return QFileInfo(m_path).absolutePath();
}

SettingsFile::Reading SettingsFile::read() const {
    const QFileInfo info(m_path);
    if (!info.exists()) {
        return {Found::nothing};
    }
    QFile file(m_path);
    // Only a regular file: opening a pipe would wait for a writer for ever.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        return {Found::somethingUnreadable};
    }
    auto content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return {Found::somethingUnreadable};
    }
    return {Found::content, std::move(content)};
}

bool SettingsFile::write(const QByteArray& content) const {
    if (!makePrivateFolder(folder())) {
        return false;
    }
    QSaveFile file(m_path);
    // The mode is set before there is anything to read. On a full disk the flush is what fails.
    return file.open(QIODevice::WriteOnly) && file.setPermissions(ownerOnly) && file.write(content) == content.size() &&
           file.flush() && file.commit();
}

std::optional<QString> SettingsFile::setAside() const {
    for (int number = 1; number <= setAsideNames; ++number) {
        const auto suffix = number == 1 ? QString() : QStringLiteral(".%1").arg(number);
        const auto name = m_path + QStringLiteral(".damaged") + suffix;
        // A link that leads nowhere is not there for exists().
        if (const QFileInfo taken(name); taken.exists() || taken.isSymLink()) {
            continue;
        }
        return QFile::rename(m_path, name) ? std::optional(name) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace tapalong
