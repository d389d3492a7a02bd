// Files and folders at paths of any length and with any letters. Any thread.
//
// std::filesystem serves for making and taking apart paths only: the one of mingw-w64 reaches no
// file whose path has more than 260 characters.
#pragma once

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace krv::host::platform {

// The path in the form in which file streams and other libraries open it. Not for messages.
std::filesystem::path OpenablePath(const std::filesystem::path& path);

bool IsFile(const std::filesystem::path& path);    // a regular file, or a link to one
bool IsFolder(const std::filesystem::path& path);  // or a link to one

// Whether both exist and are the same file or folder.
bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

// Where a link leads in the end, though nothing need be there; another path as it is.
std::filesystem::path BehindLinks(const std::filesystem::path& path);

// Whether nobody, or not who runs the program, is allowed to write into a file that exists.
bool IsWriteProtected(const std::filesystem::path& path);

struct FolderEntry {
  std::filesystem::path path;  // the folder's path and the name
  bool is_folder;              // false for links to folders
};

// What a folder holds, in the order of the file system. Nothing when it cannot be listed.
std::optional<std::vector<FolderEntry>> ListFolder(const std::filesystem::path& folder);

// True when the folder is new; false without an error when there is one already. The folder that it
// lies in must exist.
bool CreateFolder(const std::filesystem::path& folder, std::error_code& error);

// Copies a file's contents and permissions. There must be no `to` yet.
void Copy(const std::filesystem::path& from, const std::filesystem::path& to,
          std::error_code& error);

// Gives a file the permissions of another one; on Windows those that are attributes.
void CopyPermissions(const std::filesystem::path& from, const std::filesystem::path& to,
                     std::error_code& error);

// Moves a file within a disk, in place of an older `to`.
void Rename(const std::filesystem::path& from, const std::filesystem::path& to,
            std::error_code& error);

// Removes a file, write-protected ones too, a link or an empty folder. No error when there is none.
void Remove(const std::filesystem::path& path, std::error_code& error);

}  // namespace krv::host::platform
