#include "model/switches.h"

#include <cstdio>

#include "icons/icons.h"
#include "util/cstring.h"
#include "util/hosttext.h"

namespace {

// "-popup" and 3 give "-popup3".
bool HasNumberedSwitch(const char* switches, const char* prefix, int n) {
  char name[48];
  std::snprintf(name, sizeof name, "%s%d", prefix, n);
  return XP_HasSwitch(switches, name);
}

std::int32_t IconFromSwitches(const char* switches) {
  const bool services = gIconServicesAvailable != 0;
  if (XP_HasSwitch(switches, "-NoteIcon")) return services ? kIconNote : kClassicIconNote;
  if (XP_HasSwitch(switches, "-CautionIcon")) return services ? kIconCaution : kClassicIconCaution;
  if (XP_HasSwitch(switches, "-StopIcon")) return services ? kIconStop : kClassicIconStop;
  if (XP_HasSwitch(switches, "-CustomIcon")) return kIconCustom;
  return kIconNone;
}

// The title ends at its first full stop: "-dialogName=Orders.2024" is "Orders".
void TitleFromSwitches(const char* switches, UniChar* title) {
  static const char kTag[] = "-dialogName=";
  char name[255];
  if (XP_GetTaggedStr(switches, XP_Strlen(switches), kTag, sizeof kTag - 1, '.', 0, 1, 0, name,
                      sizeof name) < 0) {
    XP7_UniStrToUniStrCopy(gDefaultDialogTitleUNI, title, kMosaRowUnits - 1);
    return;
  }
  fmx::TextAutoPtr txt;
  XP7_CStrToTxt(name, txt, fmx::Text::kEncoding_ASCII_Mac);
  XP7_TxtToUniStr(txt, title, kMosaRowUnits);
}

}  // namespace

void Zk7ParseSwitches(const char* switches, std::int16_t dialogKind, ParSwitches7Tag* rec) {
  rec->returnButtonText = 0;
  rec->returnListText = 0;
  for (auto& flag : rec->buttonNeedsInput) flag = 0;
  rec->defaultButton = 1;

  rec->icon = IconFromSwitches(switches);
  rec->returnButtonText = XP_HasSwitch(switches, "-ReturnButtonText") ? 1 : 0;
  rec->returnListText = XP_HasSwitch(switches, "-ReturnListText") ? 1 : 0;

  const bool bigInput = dialogKind == kDlgKindBigInput;
  for (int b = 1; b <= 4; ++b) {
    char name[40];
    std::snprintf(name, sizeof name, bigInput ? "-Button%dNeedsText" : "-Button%dNeedsSelection",
                  b);
    rec->buttonNeedsInput[b - 1] = XP_HasSwitch(switches, name) ? 1 : 0;
  }
  for (int b = 1; b <= 4; ++b) {
    if (HasNumberedSwitch(switches, "-DefaultButton", b)) {
      rec->defaultButton = static_cast<std::uint16_t>(b);
      break;
    }
  }

  rec->startField = kNoStartField;
  std::int32_t start = 0;
  if (XP_GetTaggedLong(switches, "-StartField", &start))
    rec->startField = static_cast<std::int16_t>(start);

  rec->removeBulletText = XP_HasSwitch(switches, "-KeepBulletText") ? 0 : 1;
  for (int n = 1; n <= kMosaEntries; ++n) {
    rec->bullet[n - 1] = HasNumberedSwitch(switches, "-Bullet", n) ? 1 : 0;
    if (HasNumberedSwitch(switches, "-popup", n))
      rec->fieldKind[n - 1] = kFieldKindPopup;
    else if (HasNumberedSwitch(switches, "-Checkbox", n))
      rec->fieldKind[n - 1] = kFieldKindCheckbox;
    else
      rec->fieldKind[n - 1] = kFieldKindText;
  }
  rec->ignoreEscape = XP_HasSwitch(switches, "-StopOnESC") ? 0 : 1;
  TitleFromSwitches(switches, rec->dialogTitle);
}

std::int16_t ZkParseBTSwitches(const char* switches, std::int16_t* width, std::int16_t* height,
                               std::int32_t* maxChars, std::int32_t* minChars) {
  std::int16_t err = 0;
  std::int32_t n = 0;
  if (XP_GetTaggedLong(switches, "-Width", &n)) *width = static_cast<std::int16_t>(n);
  if (XP_GetTaggedLong(switches, "-Height", &n)) *height = static_cast<std::int16_t>(n);

  // Limits compare as unsigned 32-bit values.
  *maxChars = kBigInputMaxChars;
  if (XP_GetTaggedLong(switches, "-MaxChars", &n)) {
    if (static_cast<std::uint32_t>(n) <= static_cast<std::uint32_t>(kBigInputMaxChars))
      *maxChars = n;
    else
      err = -92;
  }
  *minChars = 1;
  if (XP_GetTaggedLong(switches, "-MinChars", &n)) {
    // 1 is already the least, so asking for it is an error too.
    if (static_cast<std::uint32_t>(n) > 1 &&
        static_cast<std::uint32_t>(n) <= static_cast<std::uint32_t>(*maxChars))
      *minChars = n;
    else
      err = -92;
  }
  return err;
}

std::uint32_t Zk7ParseDelayTime(const char* text, std::uint32_t defaultTicks,
                                std::uint32_t maximum) {
  long value = 0;
  XP_CStringToNum(text, &value);
  std::uint32_t ticks = value == 0 ? defaultTicks : static_cast<std::uint32_t>(value);
  return ticks > maximum ? maximum : ticks;
}
