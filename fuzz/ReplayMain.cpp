// Replays a fuzz target's corpus as an ordinary test: every file of the directories (or every
// file) named on the command line is fed once to LLVMFuzzerTestOneInput, in name order. Built
// with the project's usual compiler; a crash or failed check aborts the run.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        const fs::path arg(argv[i]);
        if (fs::is_directory(arg)) {
            for (const fs::directory_entry& entry : fs::recursive_directory_iterator(arg))
                if (entry.is_regular_file())
                    inputs.push_back(entry.path());
        } else if (fs::is_regular_file(arg)) {
            inputs.push_back(arg);
        } else {
            std::fprintf(stderr, "replay: %s: no such file or directory\n", argv[i]);
            return 1;
        }
    }
    std::sort(inputs.begin(), inputs.end());
    for (const fs::path& input : inputs) {
        std::ifstream in(input, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(in)),
                                std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("replay: %zu inputs\n", inputs.size());
    // An empty corpus would make the test pass without testing anything.
    return inputs.empty() ? 1 : 0;
}
