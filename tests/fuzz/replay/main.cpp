// Plays stored inputs through a fuzz target that was compiled as everything else is.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
    std::size_t played = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i])) {
            if (!entry.is_regular_file()) {
                continue;
            }
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            // Told beforehand: an input that ends the process is the last one named.
            std::cout << entry.path().filename().string() << std::endl;
            (void)LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
            ++played;
        }
    }
    std::cout << played << " inputs\n";
    return played > 0 ? 0 : 1;
}
