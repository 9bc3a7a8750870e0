// A RegistryStore behind a door that counts.
#include "tests/desktop/Registry.h"

#include <new>

namespace tessaly::memory {

std::int32_t Registry::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    calls.push_back({Call::OpenKey, std::string(keyPath), root, access, false, {}});
    const Fault fault = TakeFault(Call::OpenKey);
    return fault.error != Success ? fault.error : Opened(store.OpenKey(root, keyPath, access, key), key, access);
}

std::int32_t Registry::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                  std::uint32_t& size) {
    const bool hasBuffer = data != nullptr;
    calls.push_back({Call::QueryValue, std::string(valueName), hasBuffer ? size : 0, 0, hasBuffer, {}});
    const Fault fault = TakeFault(Call::QueryValue);
    if (fault.answers) {
        type = fault.answer.type;
        size = fault.answer.size;
        return fault.error;
    }
    if (fault.error != Success || !MayUse(key, QueryAccess)) {
        return fault.error != Success ? fault.error : AccessDenied;
    }
    return store.QueryValue(key, valueName, type, data, size);
}

std::int32_t Registry::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    calls.push_back({Call::CreateKey, std::string(keyPath), root, access, false, {}});
    const Fault fault = TakeFault(Call::CreateKey);
    return fault.error != Success ? fault.error : Opened(store.CreateKey(root, keyPath, access, key), key, access);
}

std::int32_t Registry::SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) {
    calls.push_back({Call::SetValue, std::string(valueName), type, 0, false, std::string(bytes)});
    const Fault fault = TakeFault(Call::SetValue);
    if (fault.error != Success || !MayUse(key, SetAccess)) {
        return fault.error != Success ? fault.error : AccessDenied;
    }
    return store.SetValue(key, valueName, type, bytes);
}

std::int32_t Registry::CloseKey(Handle key) noexcept {
    calls.push_back({Call::CloseKey, {}, 0, 0, false, {}});
    const Fault fault = TakeFault(Call::CloseKey);
    if (fault.error != Success) {
        return fault.error;
    }
    mOpen.erase(key);
    return store.CloseKey(key);
}

std::int32_t Registry::Opened(std::int32_t result, const Handle& key, std::uint32_t access) {
    if (result == Success) {
        mOpen[key] = access;
    }
    return result;
}

// A key that is not open is left to the store, which knows what to say.
bool Registry::MayUse(Handle key, std::uint32_t right) const {
    const auto opened = mOpen.find(key);
    return mRights == AccessRights::Ignored || opened == mOpen.end() || (opened->second & right) != 0;
}

void Registry::FailAt(Call call, std::size_t number, std::int32_t error) {
    mFaults.push_back({call, number, error, false, false, {}});
}

void Registry::AnswerAt(std::size_t number, std::int32_t error, Answer answer) {
    mFaults.push_back({Call::QueryValue, number, error, false, true, answer});
}

void Registry::ThrowAt(Call call, std::size_t number) {
    mFaults.push_back({call, number, Success, true, false, {}});
}

// The fault that is due with this call; one without effect when there is none.
Registry::Fault Registry::TakeFault(Call call) {
    Fault due;
    for (Fault& fault : mFaults) {
        if (fault.call == call && fault.callsLeft > 0 && --fault.callsLeft == 0) {
            due = fault;
        }
    }
    if (due.throws) {
        throw std::bad_alloc();
    }
    return due;
}

} // namespace tessaly::memory
