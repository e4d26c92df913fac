// The trace: one JSON object per line, written from the model so both backends write the same.
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "session_state.h"

namespace toolkit::detail {
namespace {

using Json = nlohmann::ordered_json;

const char* iconName(IconKind icon) {
  switch (icon) {
    case IconKind::Note:
      return "note";
    case IconKind::Caution:
      return "caution";
    case IconKind::Stop:
      return "stop";
    case IconKind::Custom:
      return "custom";
    case IconKind::None:
      break;
  }
  return nullptr;
}

Json itemJson(const WindowState& window, const ItemState& item) {
  Json j;
  j["n"] = item.n;
  j["kind"] = itemKindName(item.kind);
  j["rect"] = {item.rect.left, item.rect.top, item.rect.right, item.rect.bottom};
  j["visible"] = item.visible;
  j["enabled"] = item.enabled;
  j["text"] = toUtf8(item.text);
  j["value"] = item.value;
  j["max"] = item.max;
  j["default"] = window.defaultItem == item.n;
  j["focus"] = window.focus == item.n;
  switch (item.kind) {
    case ItemKind::List: {
      Json rows = Json::array();
      for (const auto& row : item.rows) rows.push_back(toUtf8(row));
      j["rows"] = rows;
      j["selected"] = item.selectedRow >= 0 ? Json(item.selectedRow + 1) : Json(nullptr);
      break;
    }
    case ItemKind::Popup: {
      Json menu = Json::array();
      for (const auto& entry : item.menu) menu.push_back(toUtf8(entry));
      j["menu"] = menu;
      j["label"] = toUtf8(item.label);
      break;
    }
    case ItemKind::Icon: {
      const char* name = iconName(item.icon);
      // A custom icon with no picture stored draws nothing.
      if (item.icon == IconKind::Custom && (!item.image || item.image->empty())) name = nullptr;
      j["icon"] = name ? Json(name) : Json(nullptr);
      break;
    }
    case ItemKind::Progress:
      j["indeterminate"] = item.indeterminate;
      break;
    case ItemKind::Edit:
      j["selection"] = {item.selStart, item.selEnd};
      j["masked"] = item.masked;
      j["label"] = toUtf8(item.label);
      break;
    case ItemKind::TextArea:
      j["selection"] = {item.selStart, item.selEnd};
      j["scroll"] = item.scroll;
      break;
    default:
      break;
  }
  return j;
}

void writeLine(const Json& j) {
  Session& s = session();
  if (!s.trace) return;
  std::string line = j.dump(-1, ' ', false, Json::error_handler_t::replace);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), s.trace);
  std::fflush(s.trace);
}

}  // namespace

void traceWindow(const char* ev, const WindowState& state, BackendWindow* window) {
  Session& s = session();
  if (window && !s.shotsDir.empty()) {
    std::error_code ignored;
    std::filesystem::create_directories(s.shotsDir, ignored);
    char name[64];
    std::snprintf(name, sizeof name, "%03d-%d-%s.png", ++s.shotCount, state.id, ev);
    window->saveShot(state, (std::filesystem::path(s.shotsDir) / name).string());
  }
  if (!s.trace) return;
  Json j;
  j["ev"] = ev;
  j["tick"] = backend().ticks();
  j["dialog"] = state.id;
  j["title"] = toUtf8(state.title);
  j["window"] = {state.frame.left, state.frame.top, state.frame.width(), state.frame.height()};
  Json items = Json::array();
  for (const ItemState& item : state.items) items.push_back(itemJson(state, item));
  j["items"] = items;
  writeLine(j);
}

void traceBeep(Tick tick) {
  Json j;
  j["ev"] = "beep";
  j["tick"] = tick;
  writeLine(j);
}

void traceAlert(int id, long number) {
  Json j;
  j["ev"] = "alert";
  j["id"] = id;
  j["number"] = number;
  writeLine(j);
}

}  // namespace toolkit::detail
