// The ordered function table of a document. Indices are positions from 0 in insertion order and close up
// after a delete, so nobody may keep one across a delete.
#pragma once

#include "document/SharedText.h"
#include "document/Status.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class FuncObject {
public:
    // Empties the lists of names, prototypes and codes. Always Done.
    Status Init();

    // The number of functions.
    std::int32_t GetCount() const;

    // `name` = the name at `index`, or "" when the index is outside 0 to count - 1. Done in every case: an
    // index out of range is not reported here, kept on purpose.
    Status GetFunctionName(std::int32_t index, std::string& name) const;

    // Appends a function; its texts are stored as they are.
    // NameCollision, and nothing changed, when an existing name begins with `name` without regard to case:
    // with "OnTick" present "ontick" and "On" collide and "OnTickSlow" does not, and an empty name collides
    // with any. An empty table accepts every name. UnexpectedError, and nothing changed, on any other error.
    Status AddFunction(std::string_view name, std::string_view prototype, std::string_view code);
    Status AddFunction(std::string_view name, SharedText prototype, SharedText code);

    // `name` = the name at `index`, or "". No value when the table is empty (callers take that as Done),
    // else Done, or IndexOutOfRange.
    std::optional<Status> GetName(std::int32_t index, std::string& name) const;

    // The texts of the function whose name is exactly `name`, case included; both "" when there is none.
    // NotFound when the table is empty, else Done, even for an unknown name: kept on purpose.
    Status GetFunction(std::string_view name, std::string& prototype, std::string& code) const;

    // The texts at `index`. NotFound, with both texts "", when the index is outside 0 to count - 1.
    Status GetFunctionByIndex(std::int32_t index, std::string& prototype, std::string& code) const;

    // Replaces the texts of the function whose name is exactly `name`. NotFound when the table is empty, else
    // Done, even for an unknown name, which changes nothing: kept on purpose.
    Status UpdateFunction(std::string_view name, std::string_view prototype, std::string_view code);

    // Removes the function whose name is exactly `name`. NotFound when there is none, UnexpectedError when
    // the table is empty.
    Status DeleteFunction(std::string_view name);

    // Views of an entry's texts without copying, good until the table changes. `index` must be valid.
    std::string_view NameAt(std::int32_t index) const;
    std::string_view PrototypeAt(std::int32_t index) const;
    std::string_view CodeAt(std::int32_t index) const;

    // The name, first in the order of the table, with which `name` collides; no value when there is none.
    // Takes time in proportion to the number of names that begin with `name`.
    std::optional<std::string_view> FindCollision(std::string_view name) const;

private:
    struct Function {
        std::string name;
        SharedText prototype;
        SharedText code;
        std::uint64_t serial; // grows with every function added
    };
    // By folded name. Folded names are unique, since a name collides with itself, so this index also serves
    // the exact look-ups; and the names that begin with a text stand together in it.
    using Index = std::map<std::string, Function*, std::less<>>;

    bool IsIndex(std::int32_t index) const { return index >= 0 && index < GetCount(); }
    Index::const_iterator FindBeginningWith(std::string_view folded) const;
    Function* Find(std::string_view name) const;

    std::vector<std::unique_ptr<Function>> mFunctions;
    Index mByFoldedName;
    std::uint64_t mNextSerial = 0;
};

} // namespace tessaly
