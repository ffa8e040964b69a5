#include "legacy/CEattUtil.h"

#include <UserLocale.h>

#include "legacy/CollationRanks.h"
#include "legacy/ShellSort.h"

#include <utility>

bool CEattUtil::SortStringArray(std::vector<std::wstring>& strings) {
    std::vector<std::wstring> sorted;
    sorted.reserve(strings.size());
    for (const std::size_t position : shellSortedOrder(collationRanks(strings, userLocale()))) {
        sorted.push_back(std::move(strings[position]));
    }
    strings = std::move(sorted);
    return true;
}
