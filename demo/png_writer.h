// Writes 24-bit RGB images as PNG files for the gallery's screenshots. Deflate "stored" blocks
// keep the writer small and dependency-free; the files are larger than they could be, which
// does not matter for screenshots kept in out/.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace varion::demo {

struct RgbImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;  // rows top to bottom, 3 bytes a pixel
};

// The complete PNG file; empty for an image with no pixels or a buffer of the wrong size.
std::vector<std::uint8_t> EncodePng(const RgbImage& image);
bool WritePng(const RgbImage& image, const std::string& path);

}  // namespace varion::demo
