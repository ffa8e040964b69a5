#include "tests/histories/Scaffolds.h"

#include <cstdint>

namespace histories {

namespace {

constexpr int kDepth = 8;

std::string at(int place) {
    return " " + std::to_string(place % 300) + "," + std::to_string(place / 300);
}

std::string in(const std::string& container) {
    return container.empty() ? "" : " in " + container;
}

std::string part(const std::string& block, int number, const std::string& container) {
    std::string line = "insert " + block + at(number) + in(container) + " Reference=" + block.substr(0, 1);
    line += std::to_string(number) + " Value=" + std::to_string(number) + "k";
    return line;
}

/// B1 in B2 in ... B8 in model space, R at the bottom.
void addChain(Drawn& drawn, History& lines) {
    std::string inner = "R";
    for (int depth = 1; depth <= kDepth; ++depth) {
        const std::string outer = "B" + std::to_string(depth);
        lines.push_back("define " + outer);
        for (std::uint32_t times = 0; times <= drawn.number(1); ++times) {
            lines.push_back("insert " + inner + at(depth) + in(outer));
        }
        inner = outer;
    }
    lines.push_back("insert " + inner + " 1,1 Reference=B1");
}

/// Each block of one row lies in both of the next: two ways to every block, four to those below, and so on.
void addDiamonds(History& lines) {
    std::string below = "R";
    for (int row = 1; row <= 3; ++row) {
        const std::string number = std::to_string(row);
        for (const char* side : {"Left", "Right", "Top"}) {
            lines.push_back("define " + (side + number));
        }
        for (const char* side : {"Left", "Right"}) {
            lines.push_back("insert " + below + " 1,1" + in(side + number));
            lines.push_back("insert " + (side + number) + " 2,2" + in("Top" + number));
        }
        below = "Top" + number;
    }
    lines.push_back("insert " + below + " 3,3 Reference=T1");
}

/// D with a representation that is older than it is, one that is younger, and one of a unit.
void addDynamic(History& lines) {
    lines.insert(lines.end(),
                 {"anonymous U", "insert *U1 4,4 Reference=U1", "define D", "dynamic D",
                  "represent D old by *U1", "represent D young", "insert D 5,5 unit 2 Reference=U2",
                  "insert R 1,1 in *U2", "insert *U2 6,6 Reference=U3"});
}

void addExternal(Drawn& drawn, const std::string& folder, History& lines) {
    const char* file = drawn.oneIn(2) ? "sheets" : "units";
    lines.push_back("attach " + inQuotes(folder + "/" + file + ".kicad_sch") + " as XREF0");
    lines.push_back("insert XREF0 7,7 Reference=X1");
    lines.push_back("insert \"XREF0|P:R\" 8,8");
}

void addTables(History& lines) {
    lines.insert(lines.end(), {"layout Sheet2", "table T 9,9 2 2", "table T2 9,9 1 3 in Sheet2",
                               "insert R 1,1 in Sheet2"});
}

/// Many references in one container, many containers of one block.
void addMany(int count, History& lines) {
    lines.push_back("define Box");
    for (int number = 0; number < count; ++number) {
        lines.push_back(part(number % 3 == 0 ? "C" : "R", 100 + number, number % 2 == 0 ? "" : "Box"));
    }
    for (int number = 0; number < count / 4; ++number) {
        const std::string name = "W" + std::to_string(number);
        lines.push_back("define " + name);
        lines.push_back("insert R 1,1 in " + name);
        lines.push_back("insert " + name + " 2,2");
    }
    lines.push_back("insert Box 1,1");
}

int countFor(Size size) {
    return size == Size::large ? 600 : 40;
}

} // namespace

History scaffold(Drawn& drawn, Size size, const std::string& drawingsFolder) {
    History lines{"new plan",
                  "define R",
                  "define C",
                  "insert R 1,1 Reference=R1 Value=1k",
                  "insert C 2,2 Reference=C1 Value=1n",
                  "insert R 1,1 in C Reference=R2"};
    if (drawn.oneIn(3)) {
        addChain(drawn, lines);
    }
    if (drawn.oneIn(4)) {
        addDiamonds(lines);
    }
    if (drawn.oneIn(2)) {
        addDynamic(lines);
    }
    if (drawn.oneIn(3)) {
        addExternal(drawn, drawingsFolder, lines);
    }
    if (drawn.oneIn(3)) {
        addTables(lines);
    }
    if (size != Size::small) {
        addMany(countFor(size), lines);
    }
    return lines;
}

} // namespace histories
