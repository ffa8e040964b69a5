#include "tests/program/RunProgram.h"

#include "tests/program/WaitForProgram.h"

#include <fstream>
#include <iterator>

namespace program {

namespace {

std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

Outcome run(const std::filesystem::path& program, const std::filesystem::path& folder, const Given& given) {
    std::ofstream(folder / "stdin", std::ios::binary) << given.input;
    const int status = waitForProgram(program, folder, given);
    return {status, read(folder / "stdout"), read(folder / "stderr")};
}

} // namespace program
