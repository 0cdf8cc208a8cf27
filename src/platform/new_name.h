/// Renames without replacing anything.
#pragma once

#include <string>
#include <system_error>

namespace veldtrim {

/// Renames the file or directory `from` to `to`, which must be on the same file system.
///
/// Returns no error if it has the new name. If anything of that name exists, even a dangling link,
/// returns std::errc::file_exists; `from` keeps its name then and on every other error. On a file
/// system that cannot rename in this way, such as NFS, a link, a file or an empty directory that
/// gets the name at the same moment can be replaced.
std::error_code renameToNewName(const std::string& from, const std::string& to);

} // namespace veldtrim
