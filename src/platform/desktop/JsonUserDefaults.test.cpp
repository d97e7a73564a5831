#include "platform/desktop/JsonUserDefaults.h"

#include "platform/desktop/DesktopTest.test.h"
#include "platform/desktop/NoticeBoard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <csignal>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tapalong {

namespace {

constexpr auto privateFile = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;

class JsonUserDefaultsTest : public DesktopTest {
protected:
    [[nodiscard]] QString folder() const { return root.path() + "/config/tapalong"; }
    [[nodiscard]] QString path() const { return folder() + "/settings.json"; }

    void writeFile(const QByteArray& content) const {
        QDir().mkpath(folder());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    [[nodiscard]] static QByteArray contentOf(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] std::optional<DefaultsValue> readBack(std::string_view key) {
        NoticeBoard otherBoard;
        return JsonUserDefaults(path(), otherBoard).value(key);
    }

    void expectOneNoticeWith(const std::string& words) const {
        ASSERT_EQ(board.notices().size(), 1U);
        EXPECT_NE(board.notices().front().find(words), std::string::npos) << board.notices().front();
    }

    QTemporaryDir root;
    NoticeBoard board;
};

TEST_F(JsonUserDefaultsTest, KeyNeverWrittenIsAbsentAndNothingIsWrittenByReading) {
    const JsonUserDefaults defaults(path(), board);
    EXPECT_EQ(defaults.value("fontSize"), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(folder()));
    EXPECT_TRUE(board.notices().empty());
}

TEST_F(JsonUserDefaultsTest, ValuesKeepTheirTypesOverARestart) {
    JsonUserDefaults defaults(path(), board);
    const std::vector<std::pair<std::string, DefaultsValue>> values{
        {"yes", true},
        {"no", false},
        {"whole", std::int64_t{1835008}},
        {"beyondDouble", (std::int64_t{1} << 53) + 1},
        {"largest", std::numeric_limits<std::int64_t>::max()},
        {"smallest", std::numeric_limits<std::int64_t>::min()},
        {"third", 1.0 / 3},
        {"tiny", 5e-324},
        {"huge", std::numeric_limits<double>::max()},
        {"text", std::string("päss\"wörd\\ 🚀\n")},
        {"empty", std::string()},
    };
    for (const auto& [key, value] : values) {
        defaults.setValue(key, value);
    }
    for (const auto& [key, value] : values) {
        EXPECT_EQ(defaults.value(key), value) << key;
        EXPECT_EQ(readBack(key), value) << key;
    }
    EXPECT_TRUE(board.notices().empty());
}

TEST_F(JsonUserDefaultsTest, HandEditedNumbersKeepTheirKind) {
    writeFile(R"({"whole": 72, "fraction": 0.1, "exponent": 1e-3, "large": 9007199254740993})");
    EXPECT_EQ(readBack("whole"), DefaultsValue(std::int64_t{72}));
    EXPECT_EQ(readBack("fraction"), DefaultsValue(0.1));
    EXPECT_EQ(readBack("exponent"), DefaultsValue(0.001));
    EXPECT_EQ(readBack("large"), DefaultsValue(std::int64_t{9007199254740993}));
}

TEST_F(JsonUserDefaultsTest, WhatTheProgramDoesNotKnowIsKept) {
    const QByteArray unknown = R"("later": {"list": [1, 2.5, null, "x"], "on": true}, "nothing": null)";
    writeFile("{" + unknown + R"(, "fontSize": 72})");
    JsonUserDefaults defaults(path(), board);
    defaults.setValue("fontSize", 96.5);
    const auto kept = QJsonDocument::fromJson(contentOf(path())).object();
    const auto expected = QJsonDocument::fromJson("{" + unknown + R"(, "fontSize": 96.5})").object();
    EXPECT_EQ(kept, expected);
    EXPECT_EQ(defaults.value("later"), std::nullopt);
    EXPECT_EQ(defaults.value("nothing"), std::nullopt);
}

TEST_F(JsonUserDefaultsTest, FileAndFolderArePrivate) {
    const auto oldMask = umask(0);
    JsonUserDefaults(path(), board).setValue("exitPassword", std::string("secret"));
    umask(oldMask);
    EXPECT_EQ(QFile::permissions(path()), privateFile);
    EXPECT_EQ(QFile::permissions(folder()), privateFile | QFile::ExeOwner | QFile::ExeUser);
}

TEST_F(JsonUserDefaultsTest, FileThatOthersCouldReadBecomesPrivateWithTheFirstWrite) {
    writeFile("{}");
    ASSERT_TRUE(QFile::setPermissions(path(), privateFile | QFile::ReadGroup | QFile::ReadOther));
    JsonUserDefaults(path(), board).setValue("exitPassword", std::string("secret"));
    EXPECT_EQ(QFile::permissions(path()), privateFile);
}

TEST_F(JsonUserDefaultsTest, LinkedFileStaysALink) {
    const auto target = root.path() + "/elsewhere.json";
    QDir().mkpath(folder());
    QFile made(target);
    ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    made.write("{}");
    made.close();
    ASSERT_TRUE(QFile::link(target, path()));
    JsonUserDefaults(path(), board).setValue("on", true);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(QJsonDocument::fromJson(contentOf(target)).object().value("on"), QJsonValue(true));
}

class DamagedSettings : public JsonUserDefaultsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(DamagedSettings, AreKeptBesideAndReplacedByTheDefaults) {
    writeFile(GetParam());
    JsonUserDefaults defaults(path(), board);
    EXPECT_EQ(defaults.value("fontSize"), std::nullopt);
    expectOneNoticeWith("settings.json.damaged");
    EXPECT_EQ(contentOf(path() + ".damaged"), QByteArray(GetParam()));
    defaults.setValue("fontSize", 80.5);
    EXPECT_EQ(readBack("fontSize"), DefaultsValue(80.5));
}

INSTANTIATE_TEST_SUITE_P(Contents, DamagedSettings,
                         ::testing::Values("", "garbage", "[1, 2]", "{\"fontSize\": 72", "\x7f\x45\xff\xfe", "72"));

TEST_F(JsonUserDefaultsTest, EarlierDamagedCopiesAreNeverOverwritten) {
    for (const auto* const content : {"first", "second", "third"}) {
        writeFile(content);
        const JsonUserDefaults defaults(path(), board);
    }
    EXPECT_EQ(contentOf(path() + ".damaged"), "first");
    EXPECT_EQ(contentOf(path() + ".damaged.2"), "second");
    EXPECT_EQ(contentOf(path() + ".damaged.3"), "third");
}

TEST_F(JsonUserDefaultsTest, FolderInThePlaceOfTheFileIsSetAside) {
    QDir().mkpath(path() + "/inside");
    JsonUserDefaults defaults(path(), board);
    expectOneNoticeWith("settings.json.damaged");
    EXPECT_TRUE(QFileInfo(path() + ".damaged/inside").isDir());
    defaults.setValue("on", true);
    EXPECT_EQ(readBack("on"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, FolderThatCannotBeMadeIsToldAndTheValueHoldsForThisRun) {
    QFile inTheWay(root.path() + "/config");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    JsonUserDefaults defaults(path(), board);
    defaults.setValue("fontSize", 80.5);
    EXPECT_EQ(defaults.value("fontSize"), DefaultsValue(80.5));
    expectOneNoticeWith("cannot be written to");

    ASSERT_TRUE(inTheWay.remove());
    defaults.setValue("on", true);
    EXPECT_TRUE(board.notices().empty());
    EXPECT_EQ(readBack("fontSize"), DefaultsValue(80.5));
}

/// For as long as it lives no file of this process may grow beyond `bytes`: writes fail as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(JsonUserDefaultsTest, WriteThatFailsHalfwayLeavesTheOldFileWhole) {
    JsonUserDefaults defaults(path(), board);
    defaults.setValue("before", std::string(500, 'b'));
    const auto old = contentOf(path());
    {
        const FileSizeLimit limit(300);
        defaults.setValue("after", std::string(20000, 'a'));
    }
    EXPECT_EQ(contentOf(path()), old);
    EXPECT_EQ(defaults.value("after"), DefaultsValue(std::string(20000, 'a')));
    expectOneNoticeWith("last only until Tapalong is closed");
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden).size(), 1);

    defaults.setValue("later", true);
    EXPECT_TRUE(board.notices().empty());
    EXPECT_EQ(readBack("after"), DefaultsValue(std::string(20000, 'a')));
}

TEST_F(JsonUserDefaultsTest, KillAtAnyMomentLeavesAWholeFile) {
    constexpr int rounds = 30;
    for (int round = 0; round < rounds; ++round) {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            NoticeBoard childBoard;
            JsonUserDefaults defaults(path(), childBoard);
            for (std::int64_t count = 0;; ++count) {
                defaults.setValue("count", count);
                defaults.setValue("padding", std::string(static_cast<std::size_t>(count % 50) * 100, 'p'));
            }
        }
        usleep(static_cast<useconds_t>(2000 + 700 * round));
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        if (QFileInfo::exists(path())) {
            ASSERT_TRUE(QJsonDocument::fromJson(contentOf(path())).isObject()) << "round " << round;
        }
    }
    EXPECT_TRUE(QFileInfo::exists(path()));
    JsonUserDefaults(path(), board).setValue("on", true);
    EXPECT_TRUE(board.notices().empty());
    EXPECT_EQ(readBack("on"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, StandardPlaceFollowsTheEnvironment) {
    qputenv("XDG_CONFIG_HOME", "/somewhere/config");
    EXPECT_EQ(JsonUserDefaults::standardPath(), "/somewhere/config/tapalong/settings.json");
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(JsonUserDefaults::standardPath(), QDir::homePath() + "/.config/tapalong/settings.json");
}

} // namespace

} // namespace tapalong
