// Checks facts against a mosa-host trace (JSON Lines). One fact a line; '#' starts a comment.
//
//   EV K [dialog ID]: PATH = JSON   the K-th event of kind EV (from 1), counted among all events
//                                   of that kind or only those of dialog ID, has JSON at PATH
//   count EV [dialog ID] = N        the trace holds N events of kind EV (of that dialog)
//
// EV is open, state, close, beep or alert. PATH is a list of words: "item N" picks the item
// numbered N, a number an array element, any other word a key; an empty path is the event.
// Example: "open 2 dialog 24272: item 3 rect = [292,104,372,124]".
//
// "trace_check --same A B" instead checks that two traces agree event by event, ticks aside (the
// headless clock is virtual, Qt's is real) and the fields each toolkit measures with its own font
// (kMeasured): the two toolkits must show the same dialogs.
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

struct Selector {
  std::string ev;
  std::optional<int> dialog;
};

bool matches(const Json& event, const Selector& s) {
  if (event.value("ev", "") != s.ev) return false;
  return !s.dialog || (event.contains("dialog") && event["dialog"] == *s.dialog);
}

// Reads "EV [K] [dialog ID]" from the words of a selector; K only when `withIndex`.
bool parseSelector(std::istringstream& in, bool withIndex, Selector& s, int& index) {
  if (!(in >> s.ev)) return false;
  if (withIndex && !(in >> index)) return false;
  std::string word;
  if (in >> word) {
    int id = 0;
    if (word != "dialog" || !(in >> id)) return false;
    s.dialog = id;
  }
  return !(in >> word);
}

std::optional<Json> follow(const Json& event, const std::string& path, std::string& why) {
  std::istringstream in(path);
  const Json* at = &event;
  for (std::string word; in >> word;) {
    if (word == "item") {
      int n = 0;
      if (!(in >> n)) {
        why = "\"item\" needs a number";
        return std::nullopt;
      }
      const Json* found = nullptr;
      if (at->contains("items")) {
        for (const Json& item : (*at)["items"]) {
          if (item.value("n", -1) == n) found = &item;
        }
      }
      if (!found) {
        why = "no item " + std::to_string(n);
        return std::nullopt;
      }
      at = found;
    } else if (at->is_array() && !word.empty() &&
               word.find_first_not_of("0123456789") == std::string::npos) {
      const std::size_t i = std::stoul(word);
      if (i >= at->size()) {
        why = "no element " + word;
        return std::nullopt;
      }
      at = &(*at)[i];
    } else if (at->is_object() && at->contains(word)) {
      at = &(*at)[word];
    } else {
      why = "no \"" + word + "\"";
      return std::nullopt;
    }
  }
  return *at;
}

std::string trim(const std::string& s) {
  const auto first = s.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return s.substr(first, s.find_last_not_of(" \t\r") - first + 1);
}

// Checks one fact; returns an empty text when it holds, else why not.
std::string check(const std::vector<Json>& events, const std::string& fact) {
  const auto equals = fact.find(" = ");
  if (equals == std::string::npos) return "no \" = \" in the fact";
  std::string lhs = trim(fact.substr(0, equals));
  Json expected;
  try {
    expected = Json::parse(fact.substr(equals + 3));
  } catch (const Json::exception&) {
    return "the expected value is not JSON";
  }
  Selector selector;
  int index = 0;
  if (lhs.rfind("count ", 0) == 0) {
    std::istringstream in(lhs.substr(6));
    if (!parseSelector(in, false, selector, index)) return "bad selector";
    long n = 0;
    for (const Json& e : events) n += matches(e, selector) ? 1 : 0;
    return Json(n) == expected ? "" : "found " + std::to_string(n);
  }
  const auto colon = lhs.find(':');
  if (colon == std::string::npos) return "no ':' after the event";
  std::istringstream in(lhs.substr(0, colon));
  if (!parseSelector(in, true, selector, index) || index < 1) return "bad selector";
  for (const Json& e : events) {
    if (!matches(e, selector) || --index > 0) continue;
    std::string why;
    const std::optional<Json> got = follow(e, lhs.substr(colon + 1), why);
    if (!got) return why + " in " + e.dump();
    return *got == expected ? "" : "found " + got->dump() + " in " + e.dump();
  }
  return "no such event";
}

// Reads a trace; false (with a message) when it cannot be read or a line is not JSON.
bool readTrace(const char* path, std::vector<Json>& events) {
  std::ifstream in(path);
  if (!in) {
    std::fprintf(stderr, "trace_check: cannot read %s\n", path);
    return false;
  }
  for (std::string line; std::getline(in, line);) {
    if (line.empty()) continue;
    try {
      events.push_back(Json::parse(line));
    } catch (const Json::exception&) {
      std::fprintf(stderr, "trace_check: a line of %s is not JSON: %s\n", path, line.c_str());
      return false;
    }
  }
  return true;
}

int checkFacts(const std::vector<Json>& events, const char* factsPath) {
  std::ifstream in(factsPath);
  if (!in) {
    std::fprintf(stderr, "trace_check: cannot read %s\n", factsPath);
    return 2;
  }
  int failures = 0, lineNumber = 0;
  for (std::string line; std::getline(in, line);) {
    ++lineNumber;
    line = trim(line);
    if (line.empty() || line[0] == '#') continue;
    const std::string why = check(events, line);
    if (!why.empty()) {
      std::fprintf(stderr, "%s:%d: %s\n  %s\n", factsPath, lineNumber, line.c_str(), why.c_str());
      ++failures;
    }
  }
  return failures == 0 ? 0 : 1;
}

// The fields derived from text metrics, which belong to each toolkit: a text area's scroll and
// caret (a line or a page down lands where the font puts it), and a scroll bar beside a text area,
// which the dialog sets from the text's height.
struct Measured {
  const char* kind;
  std::vector<const char*> fields;
};
const Measured kMeasured[] = {{"textarea", {"scroll", "selection"}},
                              {"scrollbar", {"value", "max"}}};

void eraseMeasured(Json& event) {
  if (!event.contains("items")) return;
  bool hasTextArea = false;
  for (const Json& item : event["items"]) hasTextArea |= item.value("kind", "") == "textarea";
  for (Json& item : event["items"]) {
    for (const Measured& m : kMeasured) {
      if (item.value("kind", "") != m.kind) continue;
      if (std::string(m.kind) == "scrollbar" && !hasTextArea) continue;
      for (const char* field : m.fields) item.erase(field);
    }
  }
}

int checkSame(std::vector<Json> a, std::vector<Json> b) {
  for (std::size_t i = 0; i < a.size() || i < b.size(); ++i) {
    if (i >= a.size() || i >= b.size()) {
      std::fprintf(stderr, "event %zu is only in the %s trace\n", i + 1,
                   i >= a.size() ? "second" : "first");
      return 1;
    }
    a[i].erase("tick");
    b[i].erase("tick");
    eraseMeasured(a[i]);
    eraseMeasured(b[i]);
    if (a[i] != b[i]) {
      std::fprintf(stderr, "event %zu differs\n  %s\n  %s\n", i + 1, a[i].dump().c_str(),
                   b[i].dump().c_str());
      return 1;
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const bool same = argc == 4 && std::string(argv[1]) == "--same";
  if (argc != 3 && !same) {
    std::fprintf(stderr, "usage: trace_check TRACE.jsonl FACTS | trace_check --same A B\n");
    return 2;
  }
  std::vector<Json> first, second;
  if (!readTrace(argv[same ? 2 : 1], first)) return 2;
  if (!same) return checkFacts(first, argv[2]);
  if (!readTrace(argv[3], second)) return 2;
  return checkSame(std::move(first), std::move(second));
}
