// The button and list parts of a dialog's result text, and the separator that joins the parts.
#pragma once

#include <cstdint>

#include "fmx/FMWrapper.h"
#include "model/switches.h"

constexpr std::int16_t kItemEscape = 4220;  // the ESC key, a closing button only with "-StopOnESC"
constexpr std::int16_t kItemListDoubleClick = 4242;
constexpr std::int16_t kItemReturnKey = 4243;
constexpr int kMosaButtons = 4;

// Replaces the content of `result` by the button part. ESC becomes button 0, also in the caller's
// variable.
void Zk7MakeButtonResultUNI(const ParSwitches7Tag& sw, std::int16_t* buttonNumber,
                            const UniChar buttonTexts[kMosaButtons][kMosaRowUnits],
                            fmx::TextAutoPtr& result);
// Appends the list part: the item's number, or its text with "-ReturnListText".
void Zk7MakeListResultUNI(const ParSwitches7Tag& sw, std::int32_t itemNumber,
                          const UniChar* itemText, fmx::TextAutoPtr& result);
const char* Zk7GetSeparator();
