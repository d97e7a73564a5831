#include "platform/linux/sound/Clip.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <string>

namespace tapalong {
namespace {

class ClipFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "tapalong-clips-XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_folder = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    void writeSound(const char* name, int rate, int channels, std::vector<short> samples) {
        SF_INFO info{};
        info.samplerate = rate;
        info.channels = channels;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* file = sf_open((m_folder / name).c_str(), SFM_WRITE, &info);
        ASSERT_NE(file, nullptr);
        const auto count = static_cast<sf_count_t>(samples.size());
        EXPECT_EQ(sf_write_short(file, samples.data(), count), count);
        sf_close(file);
    }

    std::filesystem::path m_folder;
};

TEST_F(ClipFiles, SamplesAreFractionsOfFullScale) {
    writeSound("Beep.wav", 48'000, 1, {0, 16'384, -8'192});
    const auto clip = loadClip(m_folder, "Beep");
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->samples, (std::vector<float>{0.0F, 0.5F, -0.25F}));
}

TEST_F(ClipFiles, MissingFileIsNoClip) {
    EXPECT_EQ(loadClip(m_folder, "Beep"), nullptr);
}

TEST_F(ClipFiles, NoFolderIsNotTheCurrentOne) {
    writeSound("Beep.wav", 48'000, 1, {0});
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(m_folder);
    EXPECT_EQ(loadClip({}, "Beep"), nullptr);
    EXPECT_NE(loadClip(".", "Beep"), nullptr);
    std::filesystem::current_path(before);
}

TEST_F(ClipFiles, MissingFolderIsNoClip) {
    EXPECT_EQ(loadClip(m_folder / "nowhere", "Beep"), nullptr);
}

TEST_F(ClipFiles, NamesAreCaseSensitive) {
    writeSound("Beep.wav", 48'000, 1, {1});
    EXPECT_EQ(loadClip(m_folder, "beep"), nullptr);
}

TEST_F(ClipFiles, NameWithAFolderIsNotLookedFor) {
    std::filesystem::create_directory(m_folder / "inner");
    writeSound("Beep.wav", 48'000, 1, {1});
    EXPECT_EQ(loadClip(m_folder / "inner", "../Beep"), nullptr);
    EXPECT_EQ(loadClip(m_folder, ""), nullptr);
}

TEST_F(ClipFiles, FileThatIsNoSoundIsNoClip) {
    std::ofstream(m_folder / "Beep.wav") << "This is a letter, not a sound.";
    EXPECT_EQ(loadClip(m_folder, "Beep"), nullptr);
}

TEST_F(ClipFiles, FileThatLostItsEndGivesWhatIsLeft) {
    writeSound("Beep.wav", 48'000, 1, std::vector<short>(1000, 100));
    std::filesystem::resize_file(m_folder / "Beep.wav", 1044);
    const auto clip = loadClip(m_folder, "Beep");
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->samples.size(), 500U);
}

TEST_F(ClipFiles, AnotherSampleRateIsNoClip) {
    writeSound("Beep.wav", 44'100, 1, {1});
    EXPECT_EQ(loadClip(m_folder, "Beep"), nullptr);
}

TEST_F(ClipFiles, TwoChannelsAreNoClip) {
    writeSound("Beep.wav", 48'000, 2, {1, 1});
    EXPECT_EQ(loadClip(m_folder, "Beep"), nullptr);
}

TEST_F(ClipFiles, FileWithoutSamplesIsNoClip) {
    writeSound("Beep.wav", 48'000, 1, {});
    EXPECT_EQ(loadClip(m_folder, "Beep"), nullptr);
}

TEST_F(ClipFiles, LongerThanTenSecondsIsNoClip) {
    writeSound("Long.wav", 48'000, 1, std::vector<short>(480'001, 1));
    writeSound("Edge.wav", 48'000, 1, std::vector<short>(480'000, 1));
    EXPECT_EQ(loadClip(m_folder, "Long"), nullptr);
    EXPECT_NE(loadClip(m_folder, "Edge"), nullptr);
}

} // namespace
} // namespace tapalong
