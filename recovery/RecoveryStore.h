// The copies of what one window has not saved, those that earlier ones left, and what was given up.
// No call throws but for memory, none changes the document or its file, and each may fail: then the next event tries
// again.
#pragma once

#include "recovery/Copy.h"

#include <functional>

namespace tessaly {

// What a store works with. All of it must outlive the store.
struct RecoveryHost {
    PrivateFiles& own;
    SequentialFiles& files;
    std::vector<std::string> folders;        // RecoveryFolders; the first one that takes a copy gets it
    ProcessMark process;                     // this program
    std::function<std::int64_t()> time;      // in milliseconds since 1970, UTC
    std::function<std::int64_t()> stopwatch; // in microseconds, from any start on
    std::string codePage = {};               // of the documents, as MakeCodePage takes it; "" for the system's
};

// This machine and this program.
RecoveryHost SystemRecoveryHost(PrivateFiles& own, SequentialFiles& files, const Environment& environment);

class RecoveryStore {
public:
    explicit RecoveryStore(RecoveryHost host);

    // Makes sure that there is a copy of what the window holds. Three files are written in turns: until the new one is
    // whole the one before it stays. No error, or that of the last folder that was tried; the copy before this one then
    // is as it was. With Flushing::Now the copy outlives a power cut, and stays until the next one that does.
    std::error_code Write(const WindowContent& content, Flushing flushing);

    // Whether a copy may be written after each change: the last one took less than 2 ms, or 20 ms for up to 200 KB, or
    // 50 times its cost has passed since, or 0.4 s, or its cost where that is more. What waited for the disk does not
    // count.
    bool IsCheap() const;

    // For a Save to `target`: Write with Flushing::Now or, where no folder takes the copy, hidden files beside
    // `target`. After an error there is no copy, and `target` must not be opened.
    std::error_code WriteBeforeSave(const WindowContent& content, const std::string& target);

    // After a Save to `target`: brings the file to the disk and looks whether it is what WriteBeforeSave wrote. When it
    // is, the copies are dropped, and its mark is returned.
    std::optional<FileMark> DropAfterSave(const std::string& target);

    // What the window is to know of a file that it loads or saves: how it is called wherever the program goes, and its
    // mark; none when it cannot be read.
    std::string FullPath(const std::string& path) const { return mHost.own.FullPath(path); }
    std::optional<FileMark> MarkOfFile(const std::string& path) const { return tessaly::MarkOfFile(mHost.files, path); }

    // Loads `document` from `copy`: LoadCopy.
    Status Load(const Copy& copy, VornSrcObj& document) const { return LoadCopy(mHost.files, copy, document); }

    // Removes the copies of this window, and the adopted one: their text is on disk, or was given up and kept.
    std::error_code Drop();

    // Keeps what the window gives up, unless the document's file holds just that, or a document without a name is the
    // default one.
    std::error_code Keep(const WindowContent& content, Reason reason);

    // All intact copies, one for each program, the newest first; and all kept documents, likewise.
    std::vector<Copy> Copies() const;
    std::vector<Copy> KeptDocuments() const;

    // Whether the program that made `copy` is gone, and its text is neither in its file nor kept. True when that cannot
    // be told. `document` tells the code page alone.
    bool IsLeft(const Copy& copy, const VornSrcObj& document) const;

    // For a start: the newest copy that is left. The others are kept as OlderCopy. Copies of programs that are gone and
    // whose text is safe are removed.
    std::optional<Copy> FindLeft(const VornSrcObj& document);

    // The hidden copy that a Save to `target` left behind, if its text is not in `target`.
    std::optional<Copy> FindBeside(const std::string& target, const VornSrcObj& document) const;

    // The user goes on with `copy`: it is dropped with the copies of this window, and not before.
    void Adopt(const Copy& copy);

    // Moves a copy to the kept documents. After an error it is where it was.
    std::error_code GiveUp(const Copy& copy, Reason reason);

    // Removes a copy or a kept document for good; a copy with the older ones of its program.
    std::error_code Remove(const Copy& copy);

private:
    Origin NextOrigin(const WindowContent& content) const; // for mBytes
    std::error_code WriteTo(const std::string& folder, const Origin& origin, Flushing flushing);
    bool IsGone(const ProcessMark& process) const;
    bool IsSafe(const Copy& copy, const VornSrcObj& document) const;
    std::error_code KeepIn(std::string_view bytes, const Origin& origin);
    std::error_code RemoveAllOf(const ProcessMark& process, std::uint64_t newest);

    RecoveryHost mHost;
    std::string mBytes;        // of the last document that was saved into it; pages that are there already cost less
    std::string mFolder;       // that took the last copy
    std::uint64_t mNumber = 0; // of the last copy that was written
    std::uint64_t mOnDisk = 0; // of the last one that outlives a power cut
    std::optional<FileMark> mLast;
    std::int64_t mLastCost = 0;
    std::int64_t mLastEnd = 0;
    bool mIsSwept = false;
    std::vector<Copy> mOthers; // to be dropped with the own ones: adopted, beside a target
};

} // namespace tessaly
