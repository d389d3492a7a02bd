#include "description/description_document.h"

#include <stdexcept>
#include <string>

#include "description/package_limits.h"

namespace krv {
namespace {

using nlohmann::json;

// The document is not yet a tree here: the library reads it without recursion.
bool LimitNesting(int depth, json::parse_event_t event, json& /*parsed*/) {
  const bool opens =
      event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
  if (opens && depth >= kDeepestNesting) {
    throw std::length_error("lists and objects lie in one another more than " +
                            std::to_string(kDeepestNesting) + " deep");
  }
  return true;
}

void LimitEntries(const json& node) {
  if (!node.is_structured()) return;
  if (node.size() > kMostEntries) {
    throw std::length_error("a list or object has more than " + std::to_string(kMostEntries) +
                            " entries");
  }
  for (const json& entry : node) LimitEntries(entry);
}

void LimitShaderFiles(const json& root, const char* key) {
  const auto files = root.find(key);
  if (files != root.end() && files->is_array() && files->size() > kMostShaderFiles) {
    throw std::length_error(std::string("\"") + key + "\" names more than " +
                            std::to_string(kMostShaderFiles) + " files");
  }
}

}  // namespace

json ParseDocument(std::string_view text) {
  json root = json::parse(text, LimitNesting);
  LimitEntries(root);
  LimitShaderFiles(root, "opengl_frag");
  LimitShaderFiles(root, "opengl_vert");
  return root;
}

}  // namespace krv
