#include "demo/png_writer.h"

#include <gtest/gtest.h>
#include <zlib.h>


#include "tests/seed.h"

namespace varion::demo {
namespace {

std::uint32_t ReadU32(const std::vector<std::uint8_t>& b, size_t at) {
  return (std::uint32_t{b[at]} << 24) | (std::uint32_t{b[at + 1]} << 16) | (std::uint32_t{b[at + 2]} << 8) | b[at + 3];
}

// Decodes our PNG with zlib as the independent reader: chunk CRCs, the zlib stream and the
// pixels must all come back.
TEST(PngWriter, ZlibDecodesThePixelsAndEveryChunkCrcHolds) {
  varion::testing::SeededRng rng;
  for (auto [w, h] : {std::pair{1, 1}, {3, 2}, {300, 250}}) {  // the last needs several stored blocks
    RgbImage img{w, h, std::vector<std::uint8_t>(static_cast<size_t>(w * h * 3))};
    for (auto& byte : img.rgb) byte = static_cast<std::uint8_t>(rng());
    std::vector<std::uint8_t> png = EncodePng(img);
    ASSERT_GT(png.size(), 8u);
    ASSERT_EQ(std::vector<std::uint8_t>(png.begin(), png.begin() + 8),
              (std::vector<std::uint8_t>{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}));
    std::vector<std::uint8_t> idat;
    std::vector<std::string> types;
    for (size_t at = 8; at < png.size();) {
      std::uint32_t len = ReadU32(png, at);
      std::string type(png.begin() + static_cast<long>(at) + 4, png.begin() + static_cast<long>(at) + 8);
      types.push_back(type);
      uLong crc = crc32(0, png.data() + at + 4, len + 4);
      ASSERT_EQ(crc, ReadU32(png, at + 8 + len)) << type;
      if (type == "IDAT") idat.insert(idat.end(), png.begin() + static_cast<long>(at) + 8, png.begin() + static_cast<long>(at + 8 + len));
      at += 12 + len;
    }
    EXPECT_EQ(types, (std::vector<std::string>{"IHDR", "IDAT", "IEND"}));
    std::vector<std::uint8_t> raw(static_cast<size_t>((w * 3 + 1) * h));
    uLongf rawLen = raw.size();
    ASSERT_EQ(uncompress(raw.data(), &rawLen, idat.data(), idat.size()), Z_OK);
    ASSERT_EQ(rawLen, raw.size());
    for (int y = 0; y < h; ++y) {
      ASSERT_EQ(raw[static_cast<size_t>(y * (w * 3 + 1))], 0);
      ASSERT_TRUE(std::equal(img.rgb.begin() + y * w * 3, img.rgb.begin() + (y + 1) * w * 3,
                             raw.begin() + y * (w * 3 + 1) + 1));
    }
  }
}

TEST(PngWriter, RefusesImagesWithoutPixelsOrWithAWrongBuffer) {
  EXPECT_TRUE(EncodePng(RgbImage{}).empty());
  EXPECT_TRUE(EncodePng(RgbImage{2, 2, std::vector<std::uint8_t>(11)}).empty());
  EXPECT_TRUE(EncodePng(RgbImage{-1, 2, {}}).empty());
}

}  // namespace
}  // namespace varion::demo
