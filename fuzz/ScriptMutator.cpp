#include "fuzz/Mutation.h"
#include "fuzz/ScriptLines.h"
#include "tests/histories/Drawn.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// Changes scripts line by line and word by word.

namespace {

// A letter behind a dollar sign stands for a word: B a block, C a container, R a reference, P a position, T a
// text, A an attribute, D a document, F a file, N a number, G a tag, S a seed.
constexpr const char* kLines[] = {"open $F",
                                  "new $D",
                                  "current $D",
                                  "close $D",
                                  "close",
                                  "load $F",
                                  "unload $F",
                                  "list blocks",
                                  "list references",
                                  "list references $B",
                                  "list layouts",
                                  "list attributes $R",
                                  "list tables",
                                  "list documents",
                                  "list modules",
                                  "insert $B $P",
                                  "insert $B $P $A $A",
                                  "insert $B $P in $C $A",
                                  "insert $B $P unit $N in $C $A",
                                  "set $R $G $T",
                                  "set @last Reference $T",
                                  "move $R $P",
                                  "copy $R $P",
                                  "erase $R",
                                  "erase $R $G",
                                  "restore $R",
                                  "restore $R $G",
                                  "attribute $R $G $T",
                                  "xdata $R MAKER $T $T",
                                  "xdata $R MAKER",
                                  "define $B",
                                  "define $B from $B",
                                  "redefine $B",
                                  "redefine $B as $B",
                                  "rename $B $B",
                                  "layout $B",
                                  "anonymous U",
                                  "anonymous T",
                                  "anonymous $T",
                                  "dynamic $B",
                                  "represent $B $T",
                                  "represent $B $T by $B",
                                  "purge $B",
                                  "attach $F as $B",
                                  "detach $B",
                                  "reload $B",
                                  "reload $B from $F",
                                  "table $T $P $N $N",
                                  "table $T $P $N $N in $C",
                                  "undo",
                                  "undo $N",
                                  "redo",
                                  "redo $N",
                                  "recording on",
                                  "recording off",
                                  "forget",
                                  "hold read $R",
                                  "hold write $R $G",
                                  "hold notify block $B",
                                  "hold write blocks",
                                  "release",
                                  "lock",
                                  "lock elsewhere",
                                  "unlock",
                                  "dialog on",
                                  "dialog off",
                                  "pending $N",
                                  "typing on",
                                  "typing off",
                                  "tick $N",
                                  "help",
                                  "help $T",
                                  "quit",
                                  "~$S 3",
                                  "~$S 20",
                                  "~$S 100",
                                  "parts",
                                  "parts $B by occurrence",
                                  "parts by component as table 5,5",
                                  "parts stop",
                                  "puppet $N attach $B $B",
                                  "puppet $N attach *",
                                  "puppet $N detach",
                                  "puppet $N every $N",
                                  "puppet update force notify",
                                  "puppet $N when called $N attach *",
                                  "puppet $N when called update force",
                                  "puppet strike $B",
                                  "puppet draw"};

constexpr const char* kBlocks[] = {
    "R",  "C",     "U",     "PWR",     "N1",           "N2",           "M1", "*U1",  "*U2",     "*T1", "@1",
    "@2", "@last", "XREF0", "XREF0|R", "*Model_Space", "*Paper_Space", "L1", "\"\"", "\"a b\"", "a|b", "r"};
constexpr const char* kReferences[] = {
    "@1", "@2", "@3", "@last", "@0", "R1", "R2", "C1", "0x10", "0x20", "0x2A", "0x1", "0xFFFFFFFFFFFFFFFF",
    "X1"};
constexpr const char* kPositions[] = {"0,0",   "1,2", "-3.5,1e3", "1e308,-1e308",
                                      "nan,0", "1,",  "inf,1",    "5e-324,0"};
constexpr const char* kTexts[] = {"R1",
                                  "R2",
                                  "10k",
                                  "\"\"",
                                  "\"a \"\"b\"\"\"",
                                  "\xC3\xA9",
                                  "\xF0\x9F\x98\x80",
                                  "\x1B[2J",
                                  "\xFF",
                                  "unit",
                                  "\"unit 1\"",
                                  "in",
                                  "as",
                                  "from",
                                  "by",
                                  "*",
                                  "#",
                                  "on",
                                  "="};
constexpr const char* kAttributes[] = {"Reference=R1", "Reference=R2", "Reference=", "Value=10k",
                                       "T1=x",         "=x",           "Note",       "in_bom=no"};
constexpr const char* kTags[] = {"Reference", "Value", "T1", "Note", "in_bom", "Name", "\"\""};
constexpr const char* kDocuments[] = {"plan", "plan2", "pair", "units", "sheets", "\"\"", "a/b"};
constexpr const char* kFiles[] = {"pair.kicad_sch",  "units.kicad_sch", "sheets.kicad_sch",
                                  "inner.kicad_sch", "nowhere",         ".",
                                  "KtDxNotify.kmx",  "PartsList.kmx",   "Puppets.kmx"};
constexpr const char* kNumbers[] = {
    "0",    "1",     "2",          "3",          "5",  "11", "100",
    "1000", "65536", "2147483647", "4294967295", "-1", "1x", "18446744073709551616"};

class Mutation : private Chance {
public:
    using Chance::Chance;

    std::vector<std::string> applyTo(std::vector<std::string> lines) {
        for (std::size_t count = 1 + below(5); count > 0; --count) {
            change(lines);
        }
        return lines;
    }

    /// The beginning of one and the end of the other.
    std::vector<std::string> cross(std::vector<std::string> lines, const std::vector<std::string>& others) {
        const std::size_t kept = below(lines.size() + 1);
        const std::size_t left = below(others.size() + 1);
        lines.resize(kept);
        lines.insert(lines.end(), others.begin() + static_cast<std::ptrdiff_t>(left), others.end());
        return lines;
    }

private:
    using Lines = std::vector<std::string>;

    void change(Lines& lines) {
        if (lines.empty() || below(2) == 0) {
            lines.insert(placeIn(lines, 1), fresh());
            return;
        }
        switch (below(6)) {
        case 0:
            lines.erase(placeIn(lines, 0));
            break;
        case 1:
            lines.insert(placeIn(lines, 1), std::string(oneOf(lines)));
            break;
        case 2:
            std::iter_swap(placeIn(lines, 0), placeIn(lines, 0));
            break;
        case 3:
            join(lines);
            break;
        default:
            changeWord(*placeIn(lines, 0));
        }
    }

    Lines::iterator placeIn(Lines& lines, std::size_t more) {
        return lines.begin() + static_cast<std::ptrdiff_t>(below(lines.size() + more));
    }

    std::string fresh() {
        std::string line;
        for (std::string_view rest = oneOf(kLines); !rest.empty(); rest.remove_prefix(1)) {
            if (rest.front() == '$') {
                rest.remove_prefix(1);
                line += word(rest.front());
            } else {
                line += rest.front();
            }
        }
        return line;
    }

    std::string word(char kind) {
        switch (kind) {
        case 'B':
            return oneOf(kBlocks);
        case 'C':
            return below(2) == 0 ? "*Model_Space" : oneOf(kBlocks);
        case 'R':
            return oneOf(kReferences);
        case 'P':
            return oneOf(kPositions);
        case 'T':
            return oneOf(kTexts);
        case 'A':
            return oneOf(kAttributes);
        case 'D':
            return oneOf(kDocuments);
        case 'F':
            return oneOf(kFiles);
        case 'G':
            return oneOf(kTags);
        case 'S':
            return std::to_string(below(1'000'000));
        default:
            return oneOf(kNumbers);
        }
    }

    /// A few lines as one command.
    void join(Lines& lines) {
        const auto begin = placeIn(lines, 0);
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min<std::size_t>(
                                     1 + below(4), static_cast<std::size_t>(lines.end() - begin)));
        std::string line = "together";
        std::for_each(begin, end,
                      [&line](const std::string& inner) { line += " " + histories::inQuotes(inner); });
        *begin = line;
        lines.erase(begin + 1, end);
    }

    void changeWord(std::string& line) {
        const std::size_t at = below(line.size() + 1);
        const std::size_t begin = std::min(line.find_first_not_of(' ', at), line.size());
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        static constexpr std::string_view kKinds = "BCRPTADFGN";
        line.replace(begin, end - begin, word(oneOf(kKinds)));
    }
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    if (seed % 8 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    return give(scriptOf(Mutation(seed).applyTo(linesOf({reinterpret_cast<const char*>(data), size}))), data,
                maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const unsigned char* one, std::size_t oneSize,
                                                 const unsigned char* other, std::size_t otherSize,
                                                 unsigned char* out, std::size_t maxSize, unsigned int seed) {
    const auto lines = linesOf({reinterpret_cast<const char*>(one), oneSize});
    const auto others = linesOf({reinterpret_cast<const char*>(other), otherSize});
    return give(scriptOf(Mutation(seed).cross(lines, others)), out, maxSize);
}
