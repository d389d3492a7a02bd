// Files and folders at paths of any length and with any letters, which the standard library does
// not reach on every platform.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace krv::test {

// The path behind a text in UTF-8.
std::filesystem::path Utf8Path(std::string_view text);

// The text of a path in UTF-8.
std::string Utf8Text(const std::filesystem::path& path);

// A relative path of more than 260 characters, with blanks and letters of several scripts.
std::filesystem::path AwkwardFolder();

// Makes a folder and those above it.
void CreateFolders(const std::filesystem::path& folder);

// Writes a file into a folder that there is. Throws when it cannot.
void WriteFile(const std::filesystem::path& file, std::string_view content);

// Removes a folder with everything in it, as far as possible.
void RemoveFolder(const std::filesystem::path& folder);

// Makes an empty folder one that cannot be listed for as long as the result lives.
std::shared_ptr<void> MakeUnlistable(const std::filesystem::path& folder);

}  // namespace krv::test
