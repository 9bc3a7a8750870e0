// A registry in memory, for tests. It records all calls, any of them can be made to fail, and it can enforce access
// rights as Windows does.
// Values are kept as raw bytes of any type; a string has a terminating NUL only if the test gives it one.
#pragma once

#include "platform/settings/RegistryStore.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace tessaly::memory {

class Registry final : public tessaly::Registry {
public:
    enum class Call { OpenKey, QueryValue, CloseKey, CreateKey, SetValue };

    // One call that was made.
    struct Record {
        Call call = Call::OpenKey;
        std::string name;         // the key path or value name, as given
        std::uint32_t number = 0; // OpenKey, CreateKey: the root; QueryValue: the size of the buffer, 0 without one;
                                  // SetValue: the type
        std::uint32_t access = 0; // OpenKey and CreateKey only
        bool hasBuffer = false;   // QueryValue only
        std::string bytes;        // SetValue only
    };

    // QueryValue may set these before it fails.
    struct Answer {
        std::uint32_t type = 0;
        std::uint32_t size = 0;
    };

    // Whether the rights that a key was opened with count.
    enum class AccessRights {
        Ignored,
        Enforced, // as on Windows: reading wants QueryAccess, writing SetAccess, and neither comes by itself
    };

    explicit Registry(AccessRights rights = AccessRights::Ignored) : mRights(rights) {}

    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

    // Makes the call number `number` (counted from 1) of kind `call` from now on return `error`, once, and do
    // nothing else. A CloseKey that fails leaves the key open.
    void FailAt(Call call, std::size_t number, std::int32_t error);

    // The same for QueryValue, but its type and size are set to `answer`. With `error` = Success it lies.
    void AnswerAt(std::size_t number, std::int32_t error, Answer answer);

    // The same for any call but CloseKey, but it throws std::bad_alloc.
    void ThrowAt(Call call, std::size_t number);

    // How many keys are open.
    std::size_t OpenCount() const { return mOpen.size(); }

    // Where the values are. Calls made to it are neither recorded nor refused.
    RegistryStore store;

    // All calls made so far.
    std::vector<Record> calls;

private:
    struct Fault {
        Call call = Call::OpenKey;
        std::size_t callsLeft = 0;
        std::int32_t error = 0;
        bool throws = false;
        bool answers = false;
        Answer answer;
    };

    Fault TakeFault(Call call);
    std::int32_t Opened(std::int32_t result, const Handle& key, std::uint32_t access);
    bool MayUse(Handle key, std::uint32_t right) const;

    std::vector<Fault> mFaults;
    std::map<Handle, std::uint32_t> mOpen; // with the rights they were opened with
    AccessRights mRights;
};

} // namespace tessaly::memory
