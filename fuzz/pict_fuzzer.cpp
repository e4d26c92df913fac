// QuickDraw picture decoding on arbitrary bytes.
#include <cstddef>
#include <cstdint>

#include "toolkit/picture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  toolkit::Image image = toolkit::picture::decodePict({data, size});
  if (!image.empty() && image.pixels.size() != static_cast<std::size_t>(image.width) *
                                                   static_cast<std::size_t>(image.height))
    __builtin_trap();
  return 0;
}
