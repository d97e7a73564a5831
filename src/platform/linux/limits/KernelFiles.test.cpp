#include "platform/linux/limits/KernelFiles.h"

#include "base/Fatal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace tapalong {

namespace {

class KernelFilesTest : public testing::Test {
protected:
    ~KernelFilesTest() override { std::filesystem::remove_all(m_root); }

    static std::filesystem::path newFolder() {
        std::string pattern = testing::TempDir() + "kernel-files-XXXXXX";
        verify(mkdtemp(pattern.data()) != nullptr, "the folder for temporary files can be written");
        return pattern;
    }

    void write(const std::filesystem::path& name, const std::string& text) {
        std::filesystem::create_directories((m_root / name).parent_path());
        std::ofstream(m_root / name) << text;
    }

    // A folder for each test: several run at a time.
    std::filesystem::path m_root = newFolder();
    KernelFiles m_files{m_root};
};

TEST_F(KernelFilesTest, TextIsReadWholeAndAMissingFileIsNone) {
    write("sys/kernel/sysrq", "438\n");
    EXPECT_EQ(m_files.text("sys/kernel/sysrq"), "438\n");
    EXPECT_EQ(m_files.text("sys/kernel/other"), std::nullopt);
}

TEST_F(KernelFilesTest, ProgramsAreTheFoldersNamedByANumber) {
    write("12/comm", "openbox\n");
    write("345/comm", "touchegg\n");
    write("self/comm", "us\n");
    std::filesystem::create_directories(m_root / "678"); // ended meanwhile
    auto names = m_files.runningPrograms();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"openbox", "touchegg"}));
}

TEST_F(KernelFilesTest, FileThatOpensButCannotBeReadIsNone) {
    // As that of a process that ends in between; of a folder, too, only the reading fails.
    std::filesystem::create_directories(m_root / "12/comm");
    write("345/comm", "touchegg\n");
    EXPECT_EQ(m_files.text("12/comm"), std::nullopt);
    EXPECT_EQ(m_files.runningPrograms(), std::vector<std::string>{"touchegg"});
}

TEST_F(KernelFilesTest, TextLongerThanOneReadIsWhole) {
    const std::string text(10000, 'x');
    write("bus/input/devices", text);
    EXPECT_EQ(m_files.text("bus/input/devices"), text);
}

TEST_F(KernelFilesTest, WithoutTheFilesNothingRuns) {
    EXPECT_TRUE(m_files.runningPrograms().empty());
}

TEST(KernelFiles, OfThisComputerNameThisProgram) {
    const auto names = KernelFiles().runningPrograms();
    EXPECT_NE(std::find(names.begin(), names.end(), "limits_tests"), names.end());
}

} // namespace

} // namespace tapalong
