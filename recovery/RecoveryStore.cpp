// A damaged copy is as good as none, so a pair of files needs no transaction: the one before it is intact.
#include "recovery/RecoveryStore.h"

#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "recovery/KeptDocuments.h"

#include <algorithm>
#include <chrono>
#include <new>

namespace tessaly {

namespace {

constexpr std::int64_t CheapCost = 2000;       // microseconds
constexpr std::int64_t BearableCost = 20'000;  // nobody notices it; a busy machine may well take that long
constexpr std::size_t SmallDocument = 200'000; // bytes
constexpr std::int64_t RestPerCost = 50;
constexpr std::uint64_t Places = 3;        // the last copy, the last one that is on the disk, and the next one
constexpr std::int64_t LongRest = 400'000; // microseconds; the caret blinks within half a second more

template <class Unit>
std::int64_t Since1970() {
    return std::chrono::duration_cast<Unit>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// Where the copy `number` of a process stands. The number of a process may have been an earlier one's; with its start
// it is this one's alone.
std::string Stem(const ProcessMark& process, std::uint64_t number) {
    return "copy-" + std::to_string(process.id) + "-" + std::to_string(MarkOf(process.start).hash) + "-" +
           std::to_string(number % Places);
}

// What a write that was cut off left behind. One that is under way elsewhere fails then, and is tried again.
void Sweep(PrivateFiles& own, const std::string& folder) {
    std::vector<FolderEntry> entries;
    own.List(folder, entries);
    for (const FolderEntry& entry : entries) {
        if (entry.name.starts_with(".psf-")) {
            own.Remove(folder + "/" + entry.name);
        }
    }
}

std::string FolderOf(const std::string& path) {
    const std::size_t end = path.find_last_of("/\\");
    return end == std::string::npos ? "." : path.substr(0, end);
}

std::string StemBeside(const std::string& path) {
    return "." + path.substr(path.find_last_of("/\\") + 1) + ".recovery";
}

// Whether what was kept is a whole document that its user has done with. The others went on in the window.
bool IsGivenUp(Reason reason) {
    return reason != Reason::TextReplaced && reason != Reason::MemberDeleted && reason != Reason::OlderCopy;
}

bool IsSameText(const Copy& a, const Copy& b) {
    return a.origin.copy == b.origin.copy && a.origin.path == b.origin.path;
}

// The result of `action`, with a shortage of memory as an error like any other.
template <class Action>
std::error_code Guarded(Action action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return std::make_error_code(std::errc::not_enough_memory);
    } catch (const std::system_error& error) {
        return error.code();
    }
}

} // namespace

RecoveryHost SystemRecoveryHost(PrivateFiles& own, SequentialFiles& files, const Environment& environment) {
    const std::uint64_t id = OwnProcess();
    return {own,
            files,
            RecoveryFolders(environment),
            {id, own.ProcessStart(id).value_or("")},
            Since1970<std::chrono::milliseconds>,
            [] {
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                return std::int64_t{std::chrono::duration_cast<std::chrono::microseconds>(now).count()};
            },
            SystemCodePageName()};
}

RecoveryStore::RecoveryStore(RecoveryHost host) : mHost(std::move(host)) {}

Origin RecoveryStore::NextOrigin(const WindowContent& content) const {
    Origin origin = OriginOf(content);
    origin.codePage = mHost.codePage;
    origin.time = mHost.time();
    origin.number = mNumber + 1;
    if (origin.number % Places == mOnDisk % Places) {
        ++origin.number;
    }
    origin.process = mHost.process;
    origin.copy = MarkOf(mBytes);
    return origin;
}

std::error_code RecoveryStore::WriteTo(const std::string& folder, const Origin& origin, Flushing flushing) {
    const auto write = [&] {
        return RewriteCopy(mHost.own, folder, Stem(mHost.process, origin.number), mBytes, origin, flushing);
    };
    // To make a folder, and to look whose it is, takes longer than a small copy.
    std::error_code error = folder == mFolder ? write() : std::make_error_code(std::errc::no_such_file_or_directory);
    if (error && !(error = mHost.own.MakeFolder(folder))) {
        error = write();
    }
    if (!error) {
        mFolder = folder;
        mNumber = origin.number;
        mOnDisk = flushing == Flushing::Now ? mNumber : mOnDisk;
        mLast = origin.copy;
    }
    return error;
}

std::error_code RecoveryStore::Write(const WindowContent& content, Flushing flushing) {
    return Guarded([&] {
        const std::int64_t begin = mHost.stopwatch();
        GetSavedBytes(content, mBytes);
        const Origin origin = NextOrigin(content);
        std::error_code error = std::make_error_code(std::errc::no_such_file_or_directory);
        for (const std::string& folder : mHost.folders) {
            error = WriteTo(folder, origin, flushing);
            if (!error) {
                if (!std::exchange(mIsSwept, true)) {
                    Sweep(mHost.own, folder);
                }
                break;
            }
        }
        mLastEnd = mHost.stopwatch();
        if (flushing == Flushing::Later) { // the disk's time is no part of the others
            mLastCost = mLastEnd - begin;
        }
        return error;
    });
}

bool RecoveryStore::IsCheap() const {
    const std::int64_t cheapCost = mBytes.size() <= SmallDocument ? BearableCost : CheapCost;
    const std::int64_t rest = std::min(RestPerCost * mLastCost, std::max(LongRest, mLastCost));
    return mLastCost < cheapCost || mHost.stopwatch() - mLastEnd >= rest;
}

std::error_code RecoveryStore::WriteBeforeSave(const WindowContent& content, const std::string& target) {
    if (!Write(content, Flushing::Now)) {
        return {};
    }
    return Guarded([&] {
        GetSavedBytes(content, mBytes);
        Origin origin = NextOrigin(content);
        origin.path = target;
        const std::error_code error =
            WriteCopy(mHost.own, FolderOf(target), StemBeside(target), mBytes, origin, Flushing::Now);
        if (!error) {
            mLast = origin.copy;
        }
        Adopt(CopyAt(FolderOf(target), StemBeside(target))); // damaged or not, it is to be dropped
        return error;
    });
}

std::optional<FileMark> RecoveryStore::DropAfterSave(const std::string& target) {
    const std::optional<FileMark> written = mLast;
    if (!written || mHost.own.Flush(target) || MarkOfFile(target) != written) {
        return std::nullopt;
    }
    Drop();
    return written;
}

// The older ones go first: alone they would be taken for the newest.
std::error_code RecoveryStore::RemoveAllOf(const ProcessMark& process, std::uint64_t newest) {
    std::error_code error;
    for (const std::uint64_t number : {newest + 1, newest + 2, newest}) {
        for (const std::string& folder : mHost.folders) {
            const std::error_code removeError = RemoveCopy(mHost.own, CopyAt(folder, Stem(process, number)));
            error = error ? error : removeError;
        }
    }
    return error;
}

std::error_code RecoveryStore::Drop() {
    std::error_code error = RemoveAllOf(mHost.process, mNumber);
    for (const Copy& copy : mOthers) {
        const std::error_code removeError = Remove(copy);
        error = error ? error : removeError;
    }
    if (!error) {
        mOthers.clear();
        mLast.reset();
    }
    return error;
}

std::error_code RecoveryStore::Remove(const Copy& copy) {
    const std::string own = Stem(copy.origin.process, copy.origin.number) + ".";
    const bool isKeptOrBeside = copy.path.substr(FolderOf(copy.path).size() + 1).rfind(own, 0) != 0;
    return isKeptOrBeside ? RemoveCopy(mHost.own, copy) : RemoveAllOf(copy.origin.process, copy.origin.number);
}

std::error_code RecoveryStore::KeepIn(std::string_view bytes, const Origin& origin) {
    std::error_code error = std::make_error_code(std::errc::no_such_file_or_directory);
    for (const std::string& folder : mHost.folders) {
        error = KeepDocument(mHost.own, folder, bytes, origin);
        if (!error) {
            break;
        }
    }
    return error;
}

std::error_code RecoveryStore::Keep(const WindowContent& content, Reason reason) {
    return Guarded([&] {
        GetSavedBytes(content, mBytes);
        if (IsTextOf(mHost.files, content.path, mBytes, content.document)) {
            return std::error_code();
        }
        Origin origin = NextOrigin(content);
        origin.reason = reason;
        origin.number = 0;
        return KeepIn(mBytes, origin);
    });
}

std::vector<Copy> RecoveryStore::Copies() const {
    std::vector<Copy> copies;
    for (const std::string& folder : mHost.folders) {
        for (Copy& copy : ReadCopies(mHost.files, mHost.own, folder)) {
            copies.push_back(std::move(copy));
        }
    }
    // The number counts within one program: its clock may have been set back meanwhile.
    std::stable_sort(copies.begin(), copies.end(),
                     [](const Copy& a, const Copy& b) { return a.origin.number > b.origin.number; });
    std::vector<Copy> newest;
    for (Copy& copy : copies) {
        if (std::none_of(newest.begin(), newest.end(),
                         [&](const Copy& other) { return other.origin.process == copy.origin.process; })) {
            newest.push_back(std::move(copy));
        }
    }
    SortNewestFirst(newest);
    return newest;
}

std::vector<Copy> RecoveryStore::KeptDocuments() const {
    std::vector<Copy> kept;
    for (const std::string& folder : mHost.folders) {
        for (Copy& copy : ReadCopies(mHost.files, mHost.own, KeptFolder(folder))) {
            kept.push_back(std::move(copy));
        }
    }
    SortNewestFirst(kept);
    return kept;
}

bool RecoveryStore::IsGone(const ProcessMark& process) const {
    return mHost.own.ProcessStart(process.id) != process.start;
}

// What cannot be read just now is not safe.
bool RecoveryStore::IsSafe(const Copy& copy, const VornSrcObj& document) const {
    const std::vector<Copy> kept = KeptDocuments();
    if (std::any_of(kept.begin(), kept.end(), [&](const Copy& other) {
            return IsGivenUp(other.origin.reason) && other.origin.time >= copy.origin.time && IsSameText(other, copy);
        })) {
        return true;
    }
    try {
        return IsTextOf(mHost.files, copy.origin.path, ReadWhole(mHost.files, copy.path), document);
    } catch (const std::system_error&) {
        return false;
    }
}

bool RecoveryStore::IsLeft(const Copy& copy, const VornSrcObj& document) const {
    return IsGone(copy.origin.process) && !IsSafe(copy, document);
}

std::optional<Copy> RecoveryStore::FindLeft(const VornSrcObj& document) {
    std::optional<Copy> left;
    for (const Copy& copy : Copies()) {
        if (!IsGone(copy.origin.process)) {
            continue;
        }
        if (IsSafe(copy, document) || (left && IsSameText(copy, *left))) {
            Remove(copy);
        } else if (left) {
            GiveUp(copy, Reason::OlderCopy);
        } else {
            left = copy;
        }
    }
    return left;
}

std::optional<Copy> RecoveryStore::FindBeside(const std::string& target, const VornSrcObj& document) const {
    std::optional<Copy> copy = ReadCopy(mHost.files, FolderOf(target), StemBeside(target));
    return copy && IsLeft(*copy, document) ? copy : std::nullopt;
}

void RecoveryStore::Adopt(const Copy& copy) {
    std::erase_if(mOthers, [&](const Copy& other) { return other.path == copy.path; });
    mOthers.push_back(copy);
}

std::error_code RecoveryStore::GiveUp(const Copy& copy, Reason reason) {
    return Guarded([&] {
        Origin origin = copy.origin;
        origin.reason = reason;
        const std::error_code error = KeepIn(ReadWhole(mHost.files, copy.path), origin);
        return error ? error : Remove(copy);
    });
}

} // namespace tessaly
