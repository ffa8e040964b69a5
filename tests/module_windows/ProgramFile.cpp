#include "tests/module_windows/ProgramFile.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

ProgramFile::ProgramFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    if (atOffset<IMAGE_DOS_HEADER>(0).e_magic != IMAGE_DOS_SIGNATURE ||
        headers().Signature != IMAGE_NT_SIGNATURE ||
        headers().OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC) {
        throw std::runtime_error(file.string() + " is no 64-bit library or program");
    }
}

template <typename T>
const T& ProgramFile::atOffset(std::size_t offset) const {
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) {
        throw std::runtime_error("the file is cut off");
    }
    return *reinterpret_cast<const T*>(bytes_.data() + offset);
}

template <typename T>
const T& ProgramFile::atAddress(std::size_t address) const {
    for (const IMAGE_SECTION_HEADER& section : sections()) {
        if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData) {
            return atOffset<T>(address - section.VirtualAddress + section.PointerToRawData);
        }
    }
    throw std::runtime_error("nothing of the file lies at that address");
}

std::string ProgramFile::textAt(std::size_t address) const {
    return &atAddress<char>(address); // the file's own texts end in a zero
}

const IMAGE_NT_HEADERS64& ProgramFile::headers() const {
    return atOffset<IMAGE_NT_HEADERS64>(static_cast<std::size_t>(atOffset<IMAGE_DOS_HEADER>(0).e_lfanew));
}

const IMAGE_DATA_DIRECTORY& ProgramFile::directory(std::size_t which) const {
    return headers().OptionalHeader.DataDirectory[which];
}

std::vector<IMAGE_SECTION_HEADER> ProgramFile::sections() const {
    const auto begin = static_cast<std::size_t>(reinterpret_cast<const char*>(&headers()) - bytes_.data()) +
                       sizeof(IMAGE_NT_HEADERS64);
    std::vector<IMAGE_SECTION_HEADER> all;
    for (std::size_t i = 0; i < headers().FileHeader.NumberOfSections; ++i) {
        all.push_back(atOffset<IMAGE_SECTION_HEADER>(begin + i * sizeof(IMAGE_SECTION_HEADER)));
    }
    return all;
}

ProgramFile::Exports ProgramFile::exports() const {
    const IMAGE_DATA_DIRECTORY& where = directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (where.Size == 0) {
        return {};
    }
    const auto& table = atAddress<IMAGE_EXPORT_DIRECTORY>(where.VirtualAddress);
    Exports exports;
    exports.functions = table.NumberOfFunctions;
    for (std::size_t i = 0; i < table.NumberOfNames; ++i) {
        exports.names.push_back(textAt(atAddress<DWORD>(table.AddressOfNames + i * sizeof(DWORD))));
    }
    return exports;
}

std::vector<std::string> ProgramFile::importedFiles() const {
    std::vector<std::string> files;
    const IMAGE_DATA_DIRECTORY& where = directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (std::size_t at = where.VirtualAddress; where.Size != 0; at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto& library = atAddress<IMAGE_IMPORT_DESCRIPTOR>(at);
        if (library.Name == 0) {
            break;
        }
        std::string name = textAt(library.Name);
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        files.push_back(std::move(name));
    }
    return files;
}

std::vector<std::string> ProgramFile::codeSections() const {
    std::vector<std::string> names;
    for (const IMAGE_SECTION_HEADER& section : sections()) {
        if ((section.Characteristics & (IMAGE_SCN_CNT_CODE | IMAGE_SCN_MEM_EXECUTE)) != 0) {
            names.emplace_back(reinterpret_cast<const char*>(section.Name), sizeof section.Name);
        }
    }
    return names;
}

DWORD ProgramFile::entryPoint() const {
    return headers().OptionalHeader.AddressOfEntryPoint;
}

bool ProgramFile::canBeMoved() const {
    return (headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED) == 0 &&
           directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size != 0;
}
