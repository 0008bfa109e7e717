#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Stands in for the fuzzer: runs a target once over each file of a folder. What must hold is checked by the target,
// which ends the program otherwise.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("one folder is expected\n", stderr);
        return 2;
    }
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::printf("%s\n", entry.path().filename().string().c_str());
        std::fflush(stdout);
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(input.data(), input.size());
        ++count;
    }
    return count > 0 ? 0 : 1;
}
