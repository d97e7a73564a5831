#include "platform/desktop/JsonUserDefaults.h"

#include "platform/desktop/NoticeBoard.h"

#include <QJsonDocument>
#include <QJsonValue>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QVariant>

#include <utility>
#include <variant>

namespace tapalong {

namespace {

const std::string damagedNotice = "settings.damaged";
const std::string failedWriteNotice = "settings.notWritten";

/// Room that a disk must have before a failed write is put down to something else.
constexpr qint64 littleRoom = 1 << 20; // bytes

QJsonValue toJson(const DefaultsValue& value) {
    struct Convert {
        QJsonValue operator()(bool each) const { return {each}; }
        QJsonValue operator()(std::int64_t each) const { return {static_cast<qint64>(each)}; }
        QJsonValue operator()(double each) const { return {each}; }
        QJsonValue operator()(const std::string& each) const { return {QString::fromStdString(each)}; }
    };
    return std::visit(Convert{}, value);
}

std::optional<DefaultsValue> fromJson(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::String:
        return value.toString().toStdString();
    case QJsonValue::Double: {
        // The variant tells the whole numbers apart, which the value's own type does not.
        const auto number = value.toVariant();
        if (number.typeId() == QMetaType::LongLong) {
            return static_cast<std::int64_t>(number.toLongLong());
        }
        return number.toDouble();
    }
    default:
        return std::nullopt;
    }
}

QString keyOf(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

QString reasonOfFailedWrite(const QString& folder) {
    const QStorageInfo disk(folder);
    if (disk.isValid() && disk.isReadOnly()) {
        return QStringLiteral("the disk is write-protected; make it writable");
    }
    if (disk.isValid() && disk.bytesAvailable() < littleRoom) {
        return QStringLiteral("the disk is full; make some room");
    }
    return QStringLiteral("the folder %1 cannot be written to; check who owns it and whether there is room")
        .arg(folder);
}

} // namespace

JsonUserDefaults::JsonUserDefaults(const QString& path, NoticeBoard& notices) : m_file(path), m_notices(notices) {
    load();
}

QString JsonUserDefaults::standardPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tapalong/settings.json");
}

std::optional<DefaultsValue> JsonUserDefaults::value(std::string_view key) const {
    return fromJson(m_values.value(keyOf(key)));
}

void JsonUserDefaults::setValue(std::string_view key, DefaultsValue value) {
    m_values.insert(keyOf(key), toJson(value));
    if (m_file.write(QJsonDocument(m_values).toJson())) {
        m_notices.clear(failedWriteNotice);
    } else {
        reportFailedWrite();
    }
}

void JsonUserDefaults::load() {
    const auto reading = m_file.read();
    if (reading.found == SettingsFile::Found::nothing) {
        return;
    }
    const auto document = QJsonDocument::fromJson(reading.content);
    if (document.isObject()) {
        m_values = document.object();
    } else {
        reportDamage();
    }
}

void JsonUserDefaults::reportDamage() {
    // Renamed rather than copied: this also keeps a file that cannot be read, and is told once only.
    const auto kept = m_file.setAside();
    const auto sentence =
        kept ? QStringLiteral("The settings file was damaged, so the standard settings are used; "
                              "the damaged file is kept as %1.")
                   .arg(*kept)
             : QStringLiteral("The settings file %1 cannot be read, so the standard settings are used.")
                   .arg(m_file.path());
    m_notices.set(damagedNotice, sentence.toStdString());
}

void JsonUserDefaults::reportFailedWrite() {
    const auto sentence = QStringLiteral("Your changes last only until Tapalong is closed, because %1, "
                                         "then change any setting again.")
                              .arg(reasonOfFailedWrite(m_file.folder()));
    m_notices.set(failedWriteNotice, sentence.toStdString());
}

} // namespace tapalong
