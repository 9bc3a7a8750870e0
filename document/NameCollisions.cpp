// Sorts the folded names; those that begin with a name then stand together right behind it.
#include "document/NameCollisions.h"

#include "document/CaseFold.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tessaly {

namespace {

// A folded name with the bytes that tell it from most others as a number, so that sorting seldom looks further.
struct SortedName {
    std::uint64_t front;
    std::string_view name;
    std::size_t place; // in the list
};

// The eight bytes behind the first `skipped`, the first one highest.
std::uint64_t FrontOf(std::string_view name, std::size_t skipped) {
    std::uint64_t front = 0;
    for (std::size_t i = skipped; i < skipped + 8; ++i) {
        front = (front << 8) | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0U);
    }
    return front;
}

std::size_t CommonLength(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    return static_cast<std::size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(shorter), b.begin()).first - a.begin());
}

std::vector<SortedName> Sort(const std::vector<std::string>& folded) {
    std::string_view common = folded.empty() ? std::string_view() : folded.front();
    for (const std::string& name : folded) {
        common = common.substr(0, CommonLength(common, name));
    }
    std::vector<SortedName> sorted;
    sorted.reserve(folded.size());
    for (std::size_t i = 0; i < folded.size(); ++i) {
        sorted.push_back({FrontOf(folded[i], common.size()), folded[i], i});
    }
    std::sort(sorted.begin(), sorted.end(), [](const SortedName& a, const SortedName& b) {
        if (a.front != b.front) {
            return a.front < b.front;
        }
        const int order = a.name.compare(b.name);
        return order != 0 ? order < 0 : a.place < b.place;
    });
    return sorted;
}

} // namespace

std::vector<bool> FindCollisions(const std::vector<std::string_view>& names) {
    std::vector<std::string> folded;
    folded.reserve(names.size());
    for (const std::string_view name : names) {
        folded.push_back(FoldCase(name));
    }
    // The names that the current one begins with, the shortest first; `earliest` is the least place among the names
    // that begin with it, itself apart. It need not matter whether those were refused: what refused one of them
    // begins with it, too, and came still earlier.
    struct Open {
        const SortedName* name;
        std::size_t earliest;
    };
    std::vector<bool> collisions(names.size(), false);
    std::vector<Open> open;
    const auto close = [&collisions, &open] {
        const Open closed = open.back();
        open.pop_back();
        if (closed.earliest < closed.name->place) {
            collisions[closed.name->place] = true;
        }
        if (!open.empty()) {
            open.back().earliest = std::min({open.back().earliest, closed.earliest, closed.name->place});
        }
    };
    const std::vector<SortedName> sorted = Sort(folded);
    for (const SortedName& name : sorted) {
        while (!open.empty() && !name.name.starts_with(open.back().name->name)) {
            close();
        }
        if (!open.empty() && open.back().name->name == name.name) {
            collisions[name.place] = true; // the same name came earlier
        }
        open.push_back({&name, names.size()});
    }
    while (!open.empty()) {
        close();
    }
    return collisions;
}

} // namespace tessaly
