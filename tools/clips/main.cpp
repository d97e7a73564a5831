// make_clips FOLDER: writes the six key sounds there as NAME.wav.
// The sounds are made at build time, so that the sources hold no recording of uncertain origin.

#include "clips/Recipe.h"
#include "clips/Synthesis.h"
#include "clips/WavFile.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

int main(int argc, char** argv) {
    using namespace tapalong::clips;
    if (argc != 2) {
        (void)std::fputs("usage: make_clips FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    for (const Recipe& recipe : allRecipes()) {
        const auto path = folder / (std::string(recipe.name) + ".wav");
        if (!writeWav(path, synthesise(recipe))) {
            (void)std::fprintf(stderr, "make_clips: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
