// Runs one fuzz target over inputs that were found once, without libFuzzer: so that any compiler's tests do.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

/// A target ends the process where its property does not hold. The name is told first, for that case.
void replay(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string input((std::istreambuf_iterator<char>(stream)), {});
    std::fprintf(stderr, "%s\n", file.filename().c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

} // namespace

/// Takes folders. Fails where they hold no file: then nothing was tried.
int main(int count, char** arguments)
{
    std::size_t replayed = 0;
    for (int index = 1; index < count; ++index)
        for (const auto& entry : fs::directory_iterator(arguments[index])) {
            replay(entry.path());
            ++replayed;
        }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;
}
