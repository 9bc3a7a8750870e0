// The ordered function table of a document. Indices are positions from 0 in insertion order and close up
// after a delete, so nobody may keep one across a delete.
#pragma once

#include "document/SharedText.h"
#include "document/Status.h"

#include <cstdint>
#include <map>
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
    // NameCollision, and nothing changed, when an existing name begins with `name` without regard to case. Beside
    // "OnTick", "ontick" and "On" collide and "OnTickSlow" does not. An empty name collides with any. An empty table
    // accepts every name. UnexpectedError, and nothing changed, on any other error.
    Status AddFunction(std::string_view name, std::string_view prototype, std::string_view code);

    // Fills an empty table with `functions` in one go, as AddFunction would add one after the other: what
    // collides is left out. Throws std::logic_error when the table is not empty; on any error it stays as it was.
    // Adding them one by one, a load of 100 MB takes 1.3 times as long.
    struct Function {
        std::string name;
        SharedText prototype;
        SharedText code;
        std::uint64_t serial = 0; // the table's own; grows with every function added, so the list is sorted by it
    };
    void Fill(std::vector<Function> functions);

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
    std::string_view NameAt(std::int32_t index) const { return At(index).name; }
    std::string_view PrototypeAt(std::int32_t index) const { return At(index).prototype.View(); }
    std::string_view CodeAt(std::int32_t index) const { return At(index).code.View(); }

    // The index of the function whose name is exactly `name`; no value when there is none.
    std::optional<std::int32_t> IndexOf(std::string_view name) const;

    // The name, first in the order of the table, with which `name` collides; no value when there is none.
    // Takes time in proportion to the number of names that begin with `name`.
    std::optional<std::string_view> FindCollision(std::string_view name) const;

private:
    // Serials by folded name. Folded names are unique, since a name collides with itself, so this also serves the
    // exact look-ups; and the names that begin with a text stand together in it.
    using Index = std::map<std::string, std::uint64_t, std::less<>>;

    bool IsIndex(std::int32_t index) const { return index >= 0 && index < GetCount(); }
    const Function& At(std::int32_t index) const { return mFunctions.at(static_cast<std::size_t>(index)); }
    Index& ByFoldedName() const;
    std::size_t PositionOf(std::uint64_t serial) const;

    std::vector<Function> mFunctions;
    mutable std::optional<Index> mByFoldedName; // made when it is first asked for: a load needs none
    std::uint64_t mNextSerial = 0;
};

} // namespace tessaly
