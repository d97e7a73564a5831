#include "platform/linux/sound/Clip.h"

#include <sndfile.h>
#include <string>

namespace tapalong {

namespace {

struct CloseSoundFile {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

/// The length comes from the file's header; believing any number there would reserve any amount of memory.
constexpr sf_count_t longestClip = sf_count_t{10} * clipRate;

bool usable(const SF_INFO& info) {
    return info.samplerate == clipRate && info.channels == 1 && info.frames > 0 && info.frames <= longestClip;
}

} // namespace

std::shared_ptr<const Clip> loadClip(const std::filesystem::path& folder, std::string_view name) {
    if (folder.empty() || name.empty() || name.find('/') != std::string_view::npos) {
        return nullptr;
    }
    const std::filesystem::path path = folder / (std::string(name) + ".wav");
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, CloseSoundFile> file(sf_open(path.c_str(), SFM_READ, &info));
    if (file == nullptr || !usable(info)) {
        return nullptr;
    }
    auto clip = std::make_shared<Clip>();
    clip->samples.resize(static_cast<std::size_t>(info.frames));
    if (sf_readf_float(file.get(), clip->samples.data(), info.frames) != info.frames) {
        return nullptr;
    }
    return clip;
}

} // namespace tapalong
