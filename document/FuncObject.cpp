// The function table. Errors inside an operation end in the fixed status that its contract names.
#include "document/FuncObject.h"

#include "document/CaseFold.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tessaly {

Status FuncObject::Init() {
    mByFoldedName.clear();
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
        return AddFunction(name, SharedText(std::string(prototype)), SharedText(std::string(code)));
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

Status FuncObject::AddFunction(std::string_view name, SharedText prototype, SharedText code) {
    try {
        std::string folded = FoldCase(name);
        if (FindBeginningWith(folded) != mByFoldedName.end()) {
            return Status::NameCollision;
        }
        auto function = std::make_unique<Function>(
            Function{std::string(name), std::move(prototype), std::move(code), mNextSerial++});
        // Room first, so that nothing can fail between the two insertions.
        if (mFunctions.size() == mFunctions.capacity()) {
            mFunctions.reserve(mFunctions.size() * 2 + 8);
        }
        mByFoldedName.emplace(std::move(folded), function.get());
        mFunctions.push_back(std::move(function));
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
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
        if (const Function* function = Find(name)) {
            prototype = function->prototype.View();
            code = function->code.View();
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
        if (Function* function = Find(name)) {
            SharedText newPrototype{std::string(prototype)};
            SharedText newCode{std::string(code)};
            function->prototype = std::move(newPrototype);
            function->code = std::move(newCode);
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
        const Function* function = Find(name);
        if (function == nullptr) {
            return Status::NotFound;
        }
        mByFoldedName.erase(mByFoldedName.find(FoldCase(name)));
        mFunctions.erase(std::find_if(mFunctions.begin(), mFunctions.end(),
                                      [function](const auto& candidate) { return candidate.get() == function; }));
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

std::string_view FuncObject::NameAt(std::int32_t index) const {
    return mFunctions.at(static_cast<std::size_t>(index))->name;
}

std::string_view FuncObject::PrototypeAt(std::int32_t index) const {
    return mFunctions.at(static_cast<std::size_t>(index))->prototype.View();
}

std::string_view FuncObject::CodeAt(std::int32_t index) const {
    return mFunctions.at(static_cast<std::size_t>(index))->code.View();
}

std::optional<std::string_view> FuncObject::FindCollision(std::string_view name) const {
    const std::string folded = FoldCase(name);
    const Function* first = nullptr;
    for (auto entry = FindBeginningWith(folded); entry != mByFoldedName.end() && entry->first.starts_with(folded);
         ++entry) {
        if (first == nullptr || entry->second->serial < first->serial) {
            first = entry->second;
        }
    }
    return first != nullptr ? std::optional<std::string_view>(first->name) : std::nullopt;
}

// The first of the names that begin with `folded`. They follow each other from the place where `folded`
// itself would stand.
FuncObject::Index::const_iterator FuncObject::FindBeginningWith(std::string_view folded) const {
    const auto entry = mByFoldedName.lower_bound(folded);
    return entry != mByFoldedName.end() && entry->first.starts_with(folded) ? entry : mByFoldedName.end();
}

FuncObject::Function* FuncObject::Find(std::string_view name) const {
    const auto entry = mByFoldedName.find(FoldCase(name));
    return entry != mByFoldedName.end() && entry->second->name == name ? entry->second : nullptr;
}

} // namespace tessaly
