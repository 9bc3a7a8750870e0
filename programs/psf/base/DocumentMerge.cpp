// Texts are compared without the line breaks at their ends, which every save adds to.
#include "programs/psf/base/DocumentMerge.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "platform/text/LineMerge.h"
#include "programs/psf/base/Session.h"

#include <algorithm>
#include <map>
#include <optional>

namespace tessaly::psf {

namespace {

struct MergedFunction {
    std::string name;
    std::string prototype;
    MergedText code;
};
using MergedFunctions = std::vector<MergedFunction>;

struct FunctionTexts {
    std::string_view prototype;
    std::string_view code;
};

std::string_view Trimmed(std::string_view text) {
    return TrimBack(text, "\r\n");
}

MergedText MergeTexts(std::string_view base, std::string_view ours, std::string_view theirs) {
    base = Trimmed(base);
    ours = Trimmed(ours);
    theirs = Trimmed(theirs);
    if (ours == theirs || theirs == base) {
        return {std::string(ours)};
    }
    return ours == base ? MergedText{std::string(theirs)} : MergeLines(base, ours, theirs);
}

// Nothing is made of stored prototypes. With two new ones there is none, as after an edit.
std::string_view MergePrototypes(std::string_view base, std::string_view ours, std::string_view theirs) {
    if (ours == theirs || theirs == base) {
        return ours;
    }
    return ours == base ? theirs : "";
}

// The functions of one side by their names.
class SideFunctions {
public:
    explicit SideFunctions(const VornSrcObj& document) {
        const FuncObject& functions = document.Functions();
        for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
            mNames.emplace_back(functions.NameAt(i));
            mByName[mNames.back()] = {Trimmed(functions.PrototypeAt(i)), Trimmed(functions.CodeAt(i))};
        }
    }

    const std::vector<std::string>& Names() const { return mNames; }
    bool Has(const std::string& name) const { return mByName.contains(name); }

    // Empty texts for one that is not there.
    FunctionTexts Texts(const std::string& name) const {
        const auto found = mByName.find(name);
        return found == mByName.end() ? FunctionTexts() : found->second;
    }

private:
    std::vector<std::string> mNames;
    std::map<std::string, FunctionTexts> mByName;
};

class FunctionMerge {
public:
    FunctionMerge(const VornSrcObj& base, const VornSrcObj& ours, const VornSrcObj& theirs)
        : mBase(base),
          mOurs(ours),
          mTheirs(theirs) {}

    MergedFunctions Merge() {
        for (const std::string& name : OrderOfOurs()) {
            Take(name);
        }
        for (const std::string& name : mTheirs.Names()) {
            if (!mOurs.Has(name)) {
                Take(name);
            }
        }
        BringInOrder();
        return std::move(mFunctions);
    }

private:
    // The names of ours. When theirs alone moved those that all three have, they stand as in theirs.
    std::vector<std::string> OrderOfOurs() const {
        const auto common = [this](const SideFunctions& side) {
            std::vector<std::string> names;
            std::copy_if(
                side.Names().begin(), side.Names().end(), std::back_inserter(names),
                [this](const std::string& name) { return mBase.Has(name) && mOurs.Has(name) && mTheirs.Has(name); });
            return names;
        };
        std::vector<std::string> names = mOurs.Names();
        const std::vector<std::string> moved = common(mTheirs);
        if (common(mOurs) == common(mBase)) {
            auto next = moved.begin();
            for (std::string& name : names) {
                const bool isCommon = mBase.Has(name) && mTheirs.Has(name);
                name = isCommon ? *next++ : name;
            }
        }
        return names;
    }

    void Take(const std::string& name) {
        const FunctionTexts base = mBase.Texts(name);
        const FunctionTexts ours = mOurs.Texts(name);
        const FunctionTexts theirs = mTheirs.Texts(name);
        const bool isDeleted = mBase.Has(name) && ((!mTheirs.Has(name) && HaveSameLines(ours.code, base.code)) ||
                                                   (!mOurs.Has(name) && HaveSameLines(theirs.code, base.code)));
        if (isDeleted) {
            return;
        }
        MergedFunction function{name, std::string(MergePrototypes(base.prototype, ours.prototype, theirs.prototype)),
                                MergeTexts(base.code, ours.code, theirs.code)};
        // Behind its deletion on one side a change of the other begins with nothing.
        if (mBase.Has(name) && !(mOurs.Has(name) && mTheirs.Has(name)) && !function.code.hasConflict) {
            function.code = {
                "<<<<<<< ours\r\n" + Block(ours.code) + "=======\r\n" + Block(theirs.code) + ">>>>>>> theirs", true};
        }
        mFunctions.push_back(std::move(function));
    }

    static std::string Block(std::string_view text) { return text.empty() ? "" : std::string(text) + "\r\n"; }

    // A load drops a function when the name of an earlier one begins with its name.
    void BringInOrder() {
        FuncObject table;
        for (std::size_t i = 0; i < mFunctions.size(); ++i) {
            const std::string& name = mFunctions[i].name;
            if (InMemory(table.AddFunction(name, "", "")) == Status::Done) {
                continue;
            }
            const std::string_view earlier = table.FindCollision(name).value_or("");
            const auto first = std::find_if(mFunctions.begin(), mFunctions.end(),
                                            [&](const MergedFunction& each) { return each.name == earlier; });
            const auto here = mFunctions.begin() + static_cast<std::ptrdiff_t>(i);
            if (earlier.size() == name.size()) { // but for the case it is the same
                first->code = MergeTexts("", first->code.text, here->code.text);
                mFunctions.erase(here);
            } else {
                std::rotate(first, here, here + 1);
            }
            table = FuncObject();
            i = static_cast<std::size_t>(-1); // from the front
        }
    }

    SideFunctions mBase;
    SideFunctions mOurs;
    SideFunctions mTheirs;
    MergedFunctions mFunctions;
};

} // namespace

std::vector<std::string> MergeDocuments(const VornSrcObj& base, const VornSrcObj& ours, const VornSrcObj& theirs,
                                        VornSrcObj& result) {
    std::vector<std::string> conflicts;
    const auto take = [&conflicts](const MergedText& merged, const std::string& member) {
        if (merged.hasConflict) {
            conflicts.push_back(member);
        }
        return merged.text;
    };
    result.Init();
    result.UpdateVarCode(
        take(MergeTexts(base.VarCode(), ours.VarCode(), theirs.VarCode()), std::string(ReferencesName)));
    for (const MergedFunction& function : FunctionMerge(base, ours, theirs).Merge()) {
        InMemory(result.AddFunction(function.name, function.prototype,
                                    take(function.code, std::string(FunctionPrefix) + function.name)));
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        const auto& event = EventTable[static_cast<std::size_t>(i)];
        result.UpdateEventCodeByIndex(i,
                                      take(MergeTexts(base.EventCodeAt(i), ours.EventCodeAt(i), theirs.EventCodeAt(i)),
                                           std::string(EventPrefix).append(event.name)));
    }
    return conflicts;
}

} // namespace tessaly::psf
