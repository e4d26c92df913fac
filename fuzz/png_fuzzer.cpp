// PNG decoding on arbitrary bytes.
#include <cstddef>
#include <cstdint>

#include "toolkit/picture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  toolkit::Image image;
  const auto status = toolkit::picture::decodePng({data, size}, image);
  if (status == toolkit::picture::Status::Ok
          ? image.pixels.size() !=
                static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height)
          : !image.empty())
    __builtin_trap();
  return 0;
}
