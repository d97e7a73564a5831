#include "clips/WavFile.h"

#include "clips/Synthesis.h"

#include <fstream>
#include <string>
#include <string_view>

namespace tapalong::clips {

namespace {

constexpr std::uint32_t bytesPerSample = 2;

/// Least significant byte first, whatever the machine's own order.
void append(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
    }
}

void append(std::string& bytes, std::string_view tag) {
    bytes += tag;
}

std::string header(std::uint32_t dataBytes) {
    constexpr std::uint32_t formatChunkBytes = 16;
    constexpr std::uint32_t plainSamples = 1;
    constexpr std::uint32_t channels = 1;
    std::string bytes;
    append(bytes, "RIFF");
    append(bytes, 36 + dataBytes, 4);
    append(bytes, "WAVEfmt ");
    append(bytes, formatChunkBytes, 4);
    append(bytes, plainSamples, 2);
    append(bytes, channels, 2);
    append(bytes, sampleRate, 4);
    append(bytes, sampleRate * channels * bytesPerSample, 4);
    append(bytes, channels * bytesPerSample, 2);
    append(bytes, 8 * bytesPerSample, 2);
    append(bytes, "data");
    append(bytes, dataBytes, 4);
    return bytes;
}

} // namespace

bool writeWav(const std::filesystem::path& path, const std::vector<std::int16_t>& samples) {
    std::string bytes = header(static_cast<std::uint32_t>(samples.size()) * bytesPerSample);
    for (const std::int16_t sample : samples) {
        append(bytes, static_cast<std::uint16_t>(sample), bytesPerSample);
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

} // namespace tapalong::clips
