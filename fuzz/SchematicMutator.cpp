#include "fuzz/Mutation.h"
#include "fuzz/SheetBundle.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// Changes schematics list by list: blind changes hardly ever leave the parentheses in pairs.

namespace {

struct Span {
    std::size_t begin;
    std::size_t end; // behind the closing parenthesis
};

/// Every list of a text, by where it opens. Parentheses in strings are none.
std::vector<Span> listsOf(std::string_view text) {
    std::vector<Span> lists;
    std::vector<std::size_t> open;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (quoted && text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            quoted = !quoted;
        } else if (!quoted && text[at] == '(') {
            open.push_back(at);
        } else if (!quoted && text[at] == ')' && !open.empty()) {
            lists.push_back({open.back(), at + 1});
            open.pop_back();
        }
    }
    return lists;
}

/// Words, numbers and strings.
std::vector<Span> atomsOf(std::string_view text) {
    static constexpr std::string_view kEnds = " \t\r\n()";
    std::vector<Span> atoms;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = text.find_first_not_of(kEnds, at);
        if (begin == std::string_view::npos) {
            break;
        }
        const std::size_t end =
            text[begin] == '"' ? text.find('"', begin + 1) : text.find_first_of(kEnds, begin);
        at = end == std::string_view::npos ? text.size() : end + (text[begin] == '"' ? 1 : 0);
        atoms.push_back({begin, at});
    }
    return atoms;
}

constexpr const char* kAtoms[] = {"yes",
                                  "no",
                                  "x",
                                  "y",
                                  "1",
                                  "0",
                                  "2",
                                  "-1",
                                  "9999",
                                  "10000",
                                  "99",
                                  "100",
                                  "1e9",
                                  "214748.3647",
                                  "-214748.3648",
                                  "1e-320",
                                  "nan",
                                  "inf",
                                  "360",
                                  "90",
                                  "20211014",
                                  "20211013",
                                  "20231120",
                                  "20250114",
                                  "power",
                                  "global",
                                  "private",
                                  "\"\"",
                                  "\"A\"",
                                  "\"A:R\"",
                                  "\"A:R_1_1\"",
                                  "\"R_0_1\"",
                                  "\"R_2_1\"",
                                  "\"R_1_2\"",
                                  "\"R_99999_1\"",
                                  "\"*U1\"",
                                  "\"a|b\"",
                                  "\"*Model_Space\"",
                                  "\"Reference\"",
                                  "\"Value\"",
                                  "\"in_bom\"",
                                  "\"dnp\"",
                                  "\"Sheetname\"",
                                  "\"Sheetfile\"",
                                  "\"Sheet name\"",
                                  "\"Sheet file\"",
                                  "\"a.kicad_sch\"",
                                  "\"b.kicad_sch\"",
                                  "\"sub/c.kicad_sch\"",
                                  "\"d.kicad_sch\"",
                                  "\"../a.kicad_sch\"",
                                  "\"./sub/../a.kicad_sch\"",
                                  "\"main.kicad_sch\"",
                                  "\"nowhere.kicad_sch\"",
                                  "\"root\"",
                                  "\"u1\"",
                                  "\"/root\"",
                                  "\"/root/u1\"",
                                  "\"/root/u1/u1\"",
                                  "\"/\"",
                                  "\"\\n\\t\\\\\\\"\"",
                                  "\"\xC3\xA9\"",
                                  "\"\xF0\x9F\x98\x80\"",
                                  "\"\\q\"",
                                  "|aGFsbG8=|",
                                  "R1",
                                  "R?",
                                  "root",
                                  "u1",
                                  "/root/u1"};

constexpr const char* kLists[] = {
    "(kicad_sch (version 20231120) (uuid \"root\"))",
    "(version 20211123)",
    "(uuid \"u1\")",
    "(lib_symbols (symbol \"A:R\" (symbol \"R_1_1\")))",
    "(symbol \"A:R\" (power) (symbol \"R_0_1\") (symbol \"R_2_1\"))",
    "(symbol \"A:S\" (extends \"R\"))",
    "(symbol \"A:R\" (extends \"A:S\"))",
    "(symbol \"R_2_2\")",
    "(extends \"A:R\")",
    "(power global)",
    "(symbol (lib_id \"A:R\") (at 1 2 90) (unit 1) (uuid \"u2\") (property \"Reference\" \"R1\"))",
    "(symbol (lib_id \"A:R\") (lib_name \"A:S\") (at 1 2) (mirror x) (unit 2) (body_style 2) (in_bom no) "
    "(on_board no) "
    "(dnp yes) (uuid \"u3\"))",
    "(property \"Reference\" \"R1\" (at 0 0 0))",
    "(property \"Value\" \"10k\" (id 1))",
    "(property private \"Note\" \"x\")",
    "(instances (project \"p\" (path \"/root\" (reference \"R7\") (unit 2))))",
    "(project \"\" (path \"/root/u1\" (reference \"R8\") (unit 1)) (path \"/root/u1\" (reference \"R9\") "
    "(unit 1)))",
    "(path \"/root/u1\" (reference \"R3\") (unit 3))",
    "(symbol_instances (path \"/u2\" (reference \"R4\") (unit 1)))",
    "(sheet (at 1 2) (size 3 4) (uuid \"u1\") (property \"Sheetname\" \"S\") (property \"Sheetfile\" "
    "\"a.kicad_sch\"))",
    "(sheet (uuid \"u1\") (property \"Sheet name\" \"T\") (property \"Sheet file\" \"b.kicad_sch\"))",
    "(sheet (uuid \"u4\") (property \"Sheetfile\" \"sub/c.kicad_sch\"))",
    "(table (column_count 2) (column_widths 1 2) (row_heights 3) (cells (table_cell \"a\" (at 1 2) (span 2 "
    "1)) "
    "(table_cell \"b\" (span 0 0))))",
    "(table (column_count 1) (cells (table_cell \"a\")))",
    "(cells (table_cell \"x\" (at 0 0 0)))",
    "(span 1 1)",
    "(mirror x y)",
    "(at 1 2 3)",
    "(convert 2)",
    "(unit 9999)",
    "(dnp yes)",
    "(embedded_files (file (data |AAAA|)))"};

class Mutation : private Chance {
public:
    using Chance::Chance;

    std::string applyTo(std::string text) {
        for (std::size_t count = 1 + below(4); count > 0; --count) {
            text = once(std::move(text));
        }
        return text;
    }

    /// A list of one in the place of a list of the other, or behind it.
    std::string cross(std::string text, std::string_view other) {
        const std::vector<Span> lists = listsOf(other);
        return lists.empty() ? text : withList(std::move(text), pieceOf(other, oneOf(lists)));
    }

private:
    static std::string pieceOf(std::string_view text, Span span) {
        return std::string(text.substr(span.begin, span.end - span.begin));
    }

    std::string once(std::string text) {
        switch (below(9)) {
        case 0:
        case 1:
        case 2:
            return withList(std::move(text), oneOf(kLists));
        case 3:
        case 4:
            return withAtom(std::move(text));
        case 5:
            return withoutList(std::move(text));
        case 6:
            return withListAgain(std::move(text));
        case 7:
            return withSheet(std::move(text));
        default:
            return cross(text, text);
        }
    }

    /// Inside a list that is there, before its end, or in the place of one.
    std::string withList(std::string text, const std::string& list) {
        const std::vector<Span> lists = listsOf(text);
        if (lists.empty()) {
            return text + list;
        }
        const Span chosen = oneOf(lists);
        if (below(3) == 0) {
            return text.replace(chosen.begin, chosen.end - chosen.begin, list);
        }
        return text.insert(chosen.end - 1, " " + list);
    }

    std::string withAtom(std::string text) {
        const std::vector<Span> atoms = atomsOf(text);
        if (atoms.empty()) {
            return text;
        }
        const Span chosen = oneOf(atoms);
        const std::string atom = below(2) == 0 ? pieceOf(text, oneOf(atoms)) : oneOf(kAtoms);
        return text.replace(chosen.begin, chosen.end - chosen.begin, atom);
    }

    std::string withoutList(std::string text) {
        const std::vector<Span> lists = listsOf(text);
        if (lists.empty()) {
            return text;
        }
        const Span chosen = oneOf(lists);
        return text.erase(chosen.begin, chosen.end - chosen.begin);
    }

    std::string withListAgain(std::string text) {
        const std::vector<Span> lists = listsOf(text);
        if (lists.empty()) {
            return text;
        }
        const Span chosen = oneOf(lists);
        const std::string list = pieceOf(text, chosen);
        for (std::size_t count = below(3) == 0 ? below(40) : 1; count > 0; --count) {
            text.insert(chosen.end, list);
        }
        return text;
    }

    /// One more file.
    std::string withSheet(std::string text) {
        return text + std::string(kSheetBreak) + "(kicad_sch (version 20231120) (uuid \"root\") " +
               oneOf(kLists) + oneOf(kLists) + ")";
    }
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    if (seed % 8 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    return give(Mutation(seed).applyTo({data, data + size}), data, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const unsigned char* one, std::size_t oneSize,
                                                 const unsigned char* other, std::size_t otherSize,
                                                 unsigned char* out, std::size_t maxSize, unsigned int seed) {
    const std::string second(other, other + otherSize);
    return give(Mutation(seed).cross({one, one + oneSize}, second), out, maxSize);
}
