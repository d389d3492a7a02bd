// Files of the user's that the studio writes anew.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace krv::studio {

// Writes a text in place of a file's, or a new file; none is ever half written. The permissions
// stay, and of a link the file that it leads to is written. False when it cannot, as where the file
// is write-protected, with one line in *error that ends with what the user can do instead.
bool SaveFile(const std::filesystem::path& file, std::string_view text, const std::string& instead,
              std::string* error);

}  // namespace krv::studio
