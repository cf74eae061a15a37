/* Plays the inputs in a folder against a target, where no fuzzer is linked to it: fuzz_NAME FOLDER */
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv)
{
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(argc == 2 ? argv[1] : "")) {
        /* Said first: an input that ends the program is known then. */
        fprintf(stderr, "%s\n", entry.path().c_str());
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(in), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
        count++;
    }
    fprintf(stderr, "%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
