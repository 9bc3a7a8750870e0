// How commands of psf write files: whole, one after the other, and never over what somebody else has just written.
#pragma once

#include "programs/psf/base/Session.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::psf {

// Replaces `file`, see ReplaceWhole. Returns Success, or says why not and returns WrongUsage where --force would help,
// OutputFailed for a file without write permission, or else the status UnexpectedError. BeingChanged is not said:
// whoever gave an `expected` state can begin again.
int Replace(const std::string& file, Existing existing, const std::function<bool(const std::string&)>& write,
            const std::optional<FileState>& expected = std::nullopt);

// Saves `document` as `file` in the same way.
int Save(const Session& session, const VornSrcObj& document, const std::string& file,
         const std::optional<FileState>& expected = std::nullopt);

// Writes `bytes` as `file` in the same way.
int SaveBytes(Session& session, std::string_view bytes, const std::string& file,
              const std::optional<FileState>& expected = std::nullopt);

// Runs `attempt`, which reads `file` and replaces it in the state that it gets, in turn with other programs of ours. It
// is run again when it returns BeingChanged; after the third time that is said.
int ChangeFile(const std::string& file, const std::function<int(const std::optional<FileState>& state)>& attempt);

// Loads `file`, has `change` change the document, and saves it unless that returns something else than Success.
int ChangeDocument(Session& session, const std::string& file, const std::function<int(VornSrcObj&)>& change);

} // namespace tessaly::psf
