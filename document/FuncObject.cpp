// The function table. Errors inside an operation end in the fixed status that its contract names.
#include "document/FuncObject.h"

#include "platform/text/CaseFold.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

namespace tessaly {

namespace {

// Tells for each function whether AddFunction would refuse it: the name of an earlier one begins with its name. Earlier
// ones that are refused count, too: what refused them begins with the same and is earlier still.
std::vector<bool> WouldCollide(const std::vector<FuncObject::Function>& functions) {
    std::vector<std::string> folded;
    folded.reserve(functions.size());
    for (const FuncObject::Function& function : functions) {
        folded.push_back(FoldCase(function.name));
    }
    struct Entry {
        std::string_view name;
        std::size_t place;    // in `functions`
        std::size_t earliest; // the least place of all names that begin with this one
        std::size_t end;      // these stand behind this one in the sorted list, up to here
    };
    std::vector<Entry> sorted;
    sorted.reserve(folded.size());
    for (std::size_t i = 0; i < folded.size(); ++i) {
        sorted.push_back({folded[i], i, i, 0});
    }
    // Of equal names the later one comes first, so the earlier ones stand behind it.
    std::sort(sorted.begin(), sorted.end(), [](const Entry& a, const Entry& b) {
        const int order = a.name.compare(b.name);
        return order != 0 ? order < 0 : a.place > b.place;
    });
    std::vector<bool> collisions(functions.size(), false);
    for (std::size_t i = sorted.size(); i-- > 0;) {
        Entry& entry = sorted[i];
        entry.end = i + 1;
        while (entry.end < sorted.size() && sorted[entry.end].name.starts_with(entry.name)) {
            entry.earliest = std::min(entry.earliest, sorted[entry.end].earliest);
            entry.end = sorted[entry.end].end;
        }
        collisions[entry.place] = entry.earliest < entry.place;
    }
    return collisions;
}

} // namespace

Status FuncObject::Init() {
    mByFoldedName.reset();
    mFunctions.clear();
    return Status::Done;
}

std::int32_t FuncObject::GetCount() const {
    return static_cast<std::int32_t>(mFunctions.size());
}

Status FuncObject::GetFunctionName(std::int32_t index, std::string& name) const {
    try {
        name = IsIndex(index) ? NameAt(index) : std::string_view();
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

Status FuncObject::AddFunction(std::string_view name, std::string_view prototype, std::string_view code) {
    try {
        std::string folded = FoldCase(name);
        Index& index = ByFoldedName();
        const auto place = index.lower_bound(folded);
        if (place != index.end() && place->first.starts_with(folded)) {
            return Status::NameCollision;
        }
        Function function{std::string(name), SharedText(prototype), SharedText(code), mNextSerial};
        // Room first, so that nothing can fail between the two insertions.
        if (mFunctions.size() == mFunctions.capacity()) {
            mFunctions.reserve(mFunctions.size() * 2 + 8);
        }
        index.emplace_hint(place, std::move(folded), mNextSerial++);
        mFunctions.push_back(std::move(function));
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

void FuncObject::Fill(std::vector<Function> functions) {
    if (!mFunctions.empty()) {
        throw std::logic_error("only an empty table can be filled");
    }
    const std::vector<bool> collisions = WouldCollide(functions);
    std::size_t count = 0;
    for (std::size_t i = 0; i < functions.size(); ++i) {
        if (!collisions[i]) {
            functions[i].serial = mNextSerial++;
            if (count != i) {
                functions[count] = std::move(functions[i]);
            }
            ++count;
        }
    }
    functions.resize(count);
    mFunctions = std::move(functions);
    mByFoldedName.reset();
}

std::optional<Status> FuncObject::GetName(std::int32_t index, std::string& name) const {
    try {
        name.clear();
        if (mFunctions.empty()) {
            return std::nullopt;
        }
        if (!IsIndex(index)) {
            return Status::IndexOutOfRange;
        }
        name = NameAt(index);
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

Status FuncObject::GetFunction(std::string_view name, std::string& prototype, std::string& code) const {
    try {
        prototype.clear();
        code.clear();
        if (mFunctions.empty()) {
            return Status::NotFound;
        }
        if (const std::optional<std::int32_t> index = IndexOf(name)) {
            prototype = PrototypeAt(*index);
            code = CodeAt(*index);
        }
        return Status::Done;
    } catch (const std::exception&) {
        return Status::NotFound;
    }
}

Status FuncObject::GetFunctionByIndex(std::int32_t index, std::string& prototype, std::string& code) const {
    try {
        prototype.clear();
        code.clear();
        if (!IsIndex(index)) {
            return Status::NotFound;
        }
        prototype = PrototypeAt(index);
        code = CodeAt(index);
        return Status::Done;
    } catch (const std::exception&) {
        return Status::NotFound;
    }
}

Status FuncObject::UpdateFunction(std::string_view name, std::string_view prototype, std::string_view code) {
    try {
        if (mFunctions.empty()) {
            return Status::NotFound;
        }
        if (const std::optional<std::int32_t> index = IndexOf(name)) {
            SharedText newPrototype(prototype);
            SharedText newCode(code);
            Function& function = mFunctions[static_cast<std::size_t>(*index)];
            function.prototype = std::move(newPrototype);
            function.code = std::move(newCode);
        }
        return Status::Done;
    } catch (const std::exception&) {
        return Status::NotFound;
    }
}

Status FuncObject::DeleteFunction(std::string_view name) {
    try {
        if (mFunctions.empty()) {
            return Status::UnexpectedError;
        }
        const std::optional<std::int32_t> index = IndexOf(name);
        if (!index) {
            return Status::NotFound;
        }
        ByFoldedName().erase(FoldCase(name));
        mFunctions.erase(mFunctions.begin() + *index);
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

std::optional<std::string_view> FuncObject::FindCollision(std::string_view name) const {
    const std::string folded = FoldCase(name);
    const Index& index = ByFoldedName();
    std::optional<std::uint64_t> first;
    for (auto entry = index.lower_bound(folded); entry != index.end() && entry->first.starts_with(folded); ++entry) {
        first = first ? std::min(*first, entry->second) : entry->second;
    }
    return first ? std::optional<std::string_view>(mFunctions[PositionOf(*first)].name) : std::nullopt;
}

FuncObject::Index& FuncObject::ByFoldedName() const {
    if (!mByFoldedName) {
        Index index;
        for (const Function& function : mFunctions) {
            index.emplace(FoldCase(function.name), function.serial);
        }
        mByFoldedName = std::move(index);
    }
    return *mByFoldedName;
}

std::optional<std::int32_t> FuncObject::IndexOf(std::string_view name) const {
    const Index& index = ByFoldedName();
    const auto entry = index.find(FoldCase(name));
    if (entry == index.end()) {
        return std::nullopt;
    }
    const std::size_t position = PositionOf(entry->second);
    return mFunctions[position].name == name ? std::optional(static_cast<std::int32_t>(position)) : std::nullopt;
}

std::size_t FuncObject::PositionOf(std::uint64_t serial) const {
    const auto function =
        std::lower_bound(mFunctions.begin(), mFunctions.end(), serial,
                         [](const Function& candidate, std::uint64_t wanted) { return candidate.serial < wanted; });
    return static_cast<std::size_t>(function - mFunctions.begin());
}

} // namespace tessaly
