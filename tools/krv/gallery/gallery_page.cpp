#include "gallery/gallery_page.h"

#include "gallery/html_text.h"
#include "gallery/page_template.h"
#include "gallery/parameter_rows.h"
#include "gallery_files.h"

namespace krv::tool {
namespace {

std::string CardHtml(const GalleryCard& card) {
  return FillTemplate(k_card_html, {{"display_name", EscapeHtml(card.effect.display_name)},
                                    {"unique_name", EscapeHtml(card.effect.unique_name)},
                                    {"still", DataUri("image/jpeg", card.still)},
                                    {"preview", DataUri("video/webm", card.preview)},
                                    {"width", std::to_string(card.width)},
                                    {"height", std::to_string(card.height)},
                                    {"parameters", ParametersHtml(card.effect)}});
}

}  // namespace

std::string GalleryPage(const std::vector<GalleryCard>& cards) {
  std::string html;
  for (const GalleryCard& card : cards) html += CardHtml(card);
  return FillTemplate(k_page_html, {{"count", std::to_string(cards.size()) +
                                                  (cards.size() == 1 ? " effect" : " effects")},
                                    {"cards", html}});
}

}  // namespace krv::tool
