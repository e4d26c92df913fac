// The record of the most recent dialog: its button and up to two values, for the getters.
#pragma once

#include <cstdint>

#include "fmx/FMWrapper.h"
#include "util/hosttext.h"

// Texts in Mac OS Roman. Returns the host's error state of its last call (0 when all went well).
fmx::int32 Zk7SaveDialogHistory(const char* buttonText, std::int32_t buttonNumber,
                                const char* value1, const char* value2);
void Zk7SaveDialogHistoryUNI(const UniChar* buttonText, std::int32_t buttonNumber,
                             const UniChar* value1, const UniChar* value2);
// Drops the stored big-input text, if any.
void Zk7CleanupHistory();
