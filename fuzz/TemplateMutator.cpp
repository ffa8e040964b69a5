#include "fuzz/Mutation.h"
#include "tests/legacy/TemplateBytes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

/// Changes bytes with the format in mind, as blind changes hardly ever get past the first class description.

namespace {

constexpr std::size_t kBlockCountOffset = 4;

class Mutation : private Chance {
public:
    using Chance::Chance;

    std::string applyTo(const std::string& bytes) {
        switch (below(5)) {
        case 0:
            return fresh();
        case 1:
            return withInsertion(bytes, token());
        case 2:
            return withSoundHead(bytes);
        case 3:
            return withInsertion(bytes, block());
        default:
            return bytes;
        }
    }

private:
    std::u16string units() {
        static constexpr char16_t kUnits[] = {u'A', u'a', 0, 0xD800, 0xDC00, 0xFFFF, 0x00E9};
        std::u16string made;
        for (std::size_t length = below(4); length > 0; --length) {
            made += oneOf(kUnits);
        }
        return made;
    }

    std::string text() {
        if (below(3) != 0) {
            return TemplateBytes().text(units()).bytes();
        }
        static const std::string kTexts[] = {"", "T", "\xC3\xA9", "\xFF", "\xE2\x82"};
        const std::string& chosen = oneOf(kTexts);
        switch (below(4)) {
        case 0:
            return TemplateBytes().u8(0xFF).u16(chosen.size()).raw(chosen).bytes();
        case 1:
            return TemplateBytes().u8(0xFF).u16(0xFFFF).u32(chosen.size()).raw(chosen).bytes();
        case 2:
            return TemplateBytes()
                .u8(0xFF)
                .u16(0xFFFF)
                .u32(0xFFFFFFFF)
                .u64(chosen.size())
                .raw(chosen)
                .bytes();
        default:
            return TemplateBytes().text8(chosen).bytes();
        }
    }

    std::string classTag() {
        switch (below(4)) {
        case 0:
            return TemplateBytes().newClass().bytes();
        case 1:
            return TemplateBytes().u16(0x7FFF).u32(0x80000001).bytes();
        default:
            return TemplateBytes().u16(0x8000 + 1 + below(3)).bytes();
        }
    }

    std::string body() {
        const std::size_t attributes = below(16);
        TemplateBytes made;
        made.raw(text()).u8(below(3)).u32(attributes);
        for (std::size_t i = 0; i < attributes; ++i) {
            made.raw(text()).u8(below(2));
        }
        return made.bytes();
    }

    std::string block() { return classTag() + body(); }

    std::string fresh() {
        const std::size_t blocks = 1 + below(4);
        TemplateBytes made = TemplateBytes().header(blocks).newClass().raw(body());
        for (std::size_t i = 1; i < blocks; ++i) {
            made.raw(block());
        }
        return made.bytes();
    }

    std::string token() { return below(2) == 0 ? text() : classTag(); }

    /// Puts something in anywhere, and counts one block more if it can.
    std::string withInsertion(std::string bytes, const std::string& inserted) {
        bytes.insert(below(bytes.size() + 1), inserted);
        if (bytes.size() > kBlockCountOffset && below(2) == 0) {
            ++bytes[kBlockCountOffset];
        }
        return bytes;
    }

    static std::string withSoundHead(const std::string& bytes) {
        std::string head = TemplateBytes().header(3).newClass().bytes();
        return bytes.size() > head.size() ? head + bytes.substr(head.size()) : head;
    }
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    const std::string changed = Mutation(seed).applyTo({data, data + size});
    const std::size_t length = give(changed, data, maxSize);
    // Half of them are changed blindly on top.
    return seed % 2 == 0 ? length : LLVMFuzzerMutate(data, length, maxSize);
}
