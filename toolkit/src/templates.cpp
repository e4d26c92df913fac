// Dialog templates: window size and numbered items with their kinds and rectangles, as JSON.
#include <fstream>
#include <nlohmann/json.hpp>

#include "session_state.h"

namespace toolkit {
namespace {

std::optional<ItemKind> kindNamed(const std::string& name) {
  for (ItemKind kind : {ItemKind::Button, ItemKind::Text, ItemKind::Edit, ItemKind::Popup,
                        ItemKind::Checkbox, ItemKind::Icon, ItemKind::List, ItemKind::TextArea,
                        ItemKind::ScrollBar, ItemKind::Progress})
    if (name == itemKindName(kind)) return kind;
  return std::nullopt;
}

}  // namespace

std::optional<DialogTemplate> loadTemplate(const std::string& path) {
  std::ifstream in(path);
  if (!in) return std::nullopt;
  nlohmann::json j = nlohmann::json::parse(in, nullptr, false);
  if (j.is_discarded() || !j.is_object()) return std::nullopt;
  try {
    DialogTemplate t;
    t.id = j.at("id").get<int>();
    t.width = j.at("width").get<int>();
    t.height = j.at("height").get<int>();
    t.title = detail::fromUtf8(j.value("title", std::string()));
    t.resizable = j.value("resizable", false);
    if (t.width <= 0 || t.height <= 0) return std::nullopt;
    for (const auto& i : j.at("items")) {
      ItemTemplate item;
      item.number = i.at("n").get<int>();
      auto kind = kindNamed(i.at("kind").get<std::string>());
      const auto& r = i.at("rect");
      if (!kind || !r.is_array() || r.size() != 4) return std::nullopt;
      item.kind = *kind;
      item.rect = {r[0].get<int>(), r[1].get<int>(), r[2].get<int>(), r[3].get<int>()};
      item.text = detail::fromUtf8(i.value("text", std::string()));
      t.items.push_back(std::move(item));
    }
    return t;
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
}

std::optional<DialogTemplate> loadTemplate(const std::string& resourcesDir, int id) {
  return loadTemplate(resourcesDir + "/dialogs/" + std::to_string(id) + ".json");
}

}  // namespace toolkit
