#include "gallery/parameter_rows.h"

#include "gallery/gradient_css.h"
#include "gallery/html_text.h"
#include "gallery/page_template.h"
#include "gallery_files.h"
#include "parameter_text.h"

namespace krv::tool {
namespace {

using host::ParameterListing;

std::string LimitsText(const ParameterListing& parameter) {
  const bool every_colour =
      parameter.kind == kKindColor && parameter.minimum <= 0 && parameter.maximum >= 0xFFFFFF;
  if (parameter.kind == kKindBool || parameter.kind == kKindText || every_colour ||
      !parameter.HasRange()) {
    return {};
  }
  return NumberText(parameter.kind, parameter.minimum) + " to " +
         NumberText(parameter.kind, parameter.maximum);
}

// Names may break after their underscores.
std::string NameHtml(const ParameterRow& row) {
  std::string html;
  for (const char& c : row.name) {
    html += EscapeHtml({&c, 1});
    if (c == '_') html += "<wbr>";
  }
  return row.hidden ? html + " <small>hidden</small>" : html;
}

std::string DefaultHtml(const ParameterRow& row) {
  std::string text = EscapeHtml(row.default_value);
  if (row.picture.empty()) return text;
  const std::string picture = EscapeHtml(row.picture);
  if (!row.wide_picture) {
    return "<span class=\"swatch\" style=\"background:" + picture + "\"></span>" + text;
  }
  return "<span class=\"swatch strip\" role=\"img\" aria-label=\"" + text + "\" title=\"" + text +
         "\" style=\"background:" + picture + "\"></span>";
}

std::string RowHtml(const ParameterRow& row) {
  return FillTemplate(k_parameter_html, {{"name", NameHtml(row)},
                                         {"kind", EscapeHtml(row.kind)},
                                         {"limits", EscapeHtml(row.limits)},
                                         {"default", DefaultHtml(row)}});
}

}  // namespace

ParameterRow DescribeParameter(const ParameterListing& parameter) {
  ParameterRow row;
  row.name = parameter.name;
  row.kind = host::ParameterKindName(parameter.kind);
  row.limits = LimitsText(parameter);
  row.hidden = parameter.hidden;
  if (parameter.kind == kKindBool) {
    row.default_value = parameter.default_number != 0 ? "true" : "false";
  } else if (parameter.kind == kKindText) {
    row.default_value = parameter.default_text;
    const auto gradient = GradientCss(parameter.default_text);
    row.wide_picture = gradient.has_value();
    row.picture = gradient.value_or("");
  } else {
    row.default_value = NumberText(parameter.kind, parameter.default_number);
    const bool drawable = parameter.default_number >= 0 && parameter.default_number <= 0xFFFFFF;
    if (parameter.kind == kKindColor && drawable) row.picture = row.default_value;
  }
  return row;
}

std::string ParametersHtml(const host::EffectListing& effect) {
  if (effect.parameters.empty()) return "<p class=\"none\">No parameters</p>";
  std::string rows;
  for (const ParameterListing& parameter : effect.parameters) {
    rows += RowHtml(DescribeParameter(parameter));
  }
  const size_t count = effect.parameters.size();
  return FillTemplate(
      k_parameters_html,
      {{"count", std::to_string(count) + (count == 1 ? " parameter" : " parameters")},
       {"rows", rows}});
}

}  // namespace krv::tool
