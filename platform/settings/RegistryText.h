// Registry export files: "Windows Registry Editor Version 5.00" and what may follow it.
// A wrong line costs only itself: everything else in the file counts.
#pragma once

#include "platform/settings/RegistryStore.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// A fault of a file, and its line, counted from 1.
struct RegistryTextError {
    std::size_t line = 0;
    std::string text; // a sentence without a full stop, of limited length
};

// Puts the keys and values of a whole file, given as its bytes, into `store`. Returns the faults of the file in the
// order of its lines. Any bytes will do.
//
// The file is UTF-8, with or without a BOM, or UTF-16LE with one. LF and CR LF end a line. Blanks around lines
// and "=" do not count; blank lines and lines that begin with ";" are left out, and so is a ";" with what follows
// behind a value. Then a line is one of
//   [ROOT\path]            the key of the lines below; it is made
//   [-ROOT\path]           deletes the key and those below it
//   "name"=value           with \" and \\ for a quote and a backslash; @ is the name of the default value
// where ROOT is HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_CLASSES_ROOT, HKEY_USERS, HKEY_CURRENT_CONFIG or one
// of HKLM, HKCU, HKCR, HKU, HKCC in any case, and a value is one of
//   "text"                 a string; it is stored with a terminating NUL
//   dword:0000000a         1 to 8 hexadecimal digits
//   hex:01,02  hex(N):01   the bytes of a binary value, or of one of type N (hexadecimal); a backslash at the end
//                          goes on in the next line. The bytes of a string (N = 1) are UTF-16LE and are stored
//                          as UTF-8, with a NUL only if there is one.
//   -                      deletes the value
// Of several values with one name the last counts. Values below a wrong or deleted key are left out.
std::vector<RegistryTextError> ReadRegistryText(std::string_view bytes, RegistryStore& store);

// The file `file`, given as its bytes, with the value `name` of `key` set; a file without a byte gets its first line,
// too. Everything else stays byte for byte as it was: the encoding, line ends, comments, the order, and what is wrong.
// A value that is there is changed in its place. Else it is added after the key's other values, and where the key is
// missing, too, with it at the end. No value when the file cannot carry it: the name has a line break or a NUL, or the
// string is not UTF-8.
std::optional<std::string> SetInRegistryText(std::string_view file, const RegistryStore::Key& key,
                                             std::string_view name, const RegistryStore::Value& value);

} // namespace tessaly
