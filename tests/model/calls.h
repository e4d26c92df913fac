// Calls an external function the way the host does: arguments in a vector, the answer in a value.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "fmx/FMWrapper.h"
#include "frame/handlers.h"
#include "model/state.h"

namespace modeltest {

// A text argument (UTF-8 here) or a number argument.
using Arg = std::variant<std::string, std::int32_t>;
using Handler = fmx::errcode (*)(short, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&);

std::string Call(Handler handler, const std::vector<Arg>& args);
// A text argument made from bytes in Mac OS Roman, as the switches are read.
Arg MacRoman(const std::string& bytes);

std::u16string Row(const UniChar* row);
std::u16string U16(const std::string& utf8);
std::string Utf8(const std::u16string& s);
std::string TextOf(const fmx::Text& txt);

// Puts every field of the dialog state back to its start-up value.
void ResetModelState();

}  // namespace modeltest
