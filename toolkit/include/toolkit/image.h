// A picture the toolkit can draw scaled into an item's rectangle (the custom dialog icon).
#pragma once

#include <cstdint>
#include <vector>

namespace toolkit {

struct Image {
  int width = 0;
  int height = 0;
  // Row-major, width * height pixels, each 0xAARRGGBB (straight, not premultiplied alpha).
  std::vector<std::uint32_t> pixels;

  bool empty() const { return width <= 0 || height <= 0; }
};

}  // namespace toolkit
