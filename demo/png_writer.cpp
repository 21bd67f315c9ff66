#include "demo/png_writer.h"

#include <array>
#include <fstream>

namespace varion::demo {
namespace {

std::uint32_t Crc32(const std::uint8_t* data, size_t n, std::uint32_t crc = 0) {
  static const auto table = [] {
    std::array<std::uint32_t, 256> t{};
    for (std::uint32_t i = 0; i < 256; ++i) {
      std::uint32_t c = i;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[i] = c;
    }
    return t;
  }();
  crc = ~crc;
  for (size_t i = 0; i < n; ++i) crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

void PutU32(std::vector<std::uint8_t>& out, std::uint32_t v) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(v >> shift));
}

void Chunk(std::vector<std::uint8_t>& out, const char* type, const std::vector<std::uint8_t>& body) {
  PutU32(out, static_cast<std::uint32_t>(body.size()));
  size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), body.begin(), body.end());
  PutU32(out, Crc32(out.data() + start, out.size() - start));
}

}  // namespace

std::vector<std::uint8_t> EncodePng(const RgbImage& image) {
  if (image.width <= 0 || image.height <= 0 ||
      image.rgb.size() != static_cast<size_t>(image.width) * static_cast<size_t>(image.height) * 3)
    return {};
  // Raw scan lines, each led by filter type 0.
  const size_t stride = static_cast<size_t>(image.width) * 3;
  std::vector<std::uint8_t> raw;
  raw.reserve((stride + 1) * static_cast<size_t>(image.height));
  for (int y = 0; y < image.height; ++y) {
    raw.push_back(0);
    auto row = image.rgb.begin() + static_cast<std::ptrdiff_t>(stride * static_cast<size_t>(y));
    raw.insert(raw.end(), row, row + static_cast<std::ptrdiff_t>(stride));
  }
  // zlib stream: header, stored blocks of at most 65535 bytes, Adler-32 of the raw data.
  std::vector<std::uint8_t> z = {0x78, 0x01};
  for (size_t pos = 0; pos < raw.size() || raw.empty();) {
    size_t n = std::min<size_t>(65535, raw.size() - pos);
    bool last = pos + n == raw.size();
    z.push_back(last ? 1 : 0);
    z.push_back(static_cast<std::uint8_t>(n & 0xFF));
    z.push_back(static_cast<std::uint8_t>(n >> 8));
    z.push_back(static_cast<std::uint8_t>(~n & 0xFF));
    z.push_back(static_cast<std::uint8_t>((~n >> 8) & 0xFF));
    z.insert(z.end(), raw.begin() + static_cast<std::ptrdiff_t>(pos), raw.begin() + static_cast<std::ptrdiff_t>(pos + n));
    pos += n;
    if (last) break;
  }
  std::uint32_t a = 1, b = 0;
  for (std::uint8_t byte : raw) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  PutU32(z, (b << 16) | a);

  std::vector<std::uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<std::uint8_t> header;
  PutU32(header, static_cast<std::uint32_t>(image.width));
  PutU32(header, static_cast<std::uint32_t>(image.height));
  header.insert(header.end(), {8, 2, 0, 0, 0});  // 8 bits, truecolour, deflate, no filter, no interlace
  Chunk(out, "IHDR", header);
  Chunk(out, "IDAT", z);
  Chunk(out, "IEND", {});
  return out;
}

bool WritePng(const RgbImage& image, const std::string& path) {
  std::vector<std::uint8_t> bytes = EncodePng(image);
  if (bytes.empty()) return false;
  std::ofstream f(path, std::ios::binary);
  f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(f);
}

}  // namespace varion::demo
