#include "server/tar-archive.h"

#include "core/c-resource.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

constexpr std::size_t block_size = 512;

using Block = std::array<char, block_size>;

// The position and length of a header's field (POSIX.1-1988, "ustar"). Numbers are in octal
// digits.
struct Field {
  std::size_t start;
  std::size_t size;
};
constexpr Field name_field{0, 100};
constexpr Field mode_field{100, 8};
constexpr Field size_field{124, 12};
constexpr Field checksum_field{148, 8};
constexpr Field type_field{156, 1};
constexpr Field target_field{157, 100};
constexpr Field magic_field{257, 8};

void put(Block& header, const Field& field, const std::string& text)
{
  ASSERT_GE(field.size, text.size()) << text;
  std::memcpy(header.data() + field.start, text.data(), text.size());
}

void put_number(Block& header, const Field& field, std::size_t number)
{
  char digits[16];
  std::snprintf(digits, sizeof digits, "%0*zo", static_cast<int>(field.size - 1), number);
  put(header, field, digits);
}

// Writes the sum of all bytes. The bytes of its own field count as blanks.
void put_checksum(Block& header)
{
  put(header, checksum_field, std::string(checksum_field.size, ' '));
  std::size_t sum = 0;
  for (const char c : header)
    sum += static_cast<unsigned char>(c);
  put_number(header, {checksum_field.start, checksum_field.size - 1}, sum);
}

std::string tar_bytes(const TarEntry& entry)
{
  const bool is_file = entry.type == TarEntry::FILE;
  Block header{};
  put(header, name_field, entry.name);
  put_number(header, mode_field, entry.type == TarEntry::DIRECTORY ? 0755 : 0644);
  put_number(header, size_field, is_file ? entry.contents.size() : 0);
  put(header, type_field, std::string(1, entry.type));
  put(header, target_field, is_file ? "" : entry.contents);
  put(header, magic_field, std::string("ustar\00000", magic_field.size));
  put_checksum(header);
  std::string bytes(header.data(), header.size());
  if (is_file) {
    bytes += entry.contents;
    bytes.resize((bytes.size() + block_size - 1) / block_size * block_size);
  }
  return bytes;
}

} // namespace

void write_archive(const std::string& path, const std::vector<TarEntry>& entries)
{
  std::string bytes;
  for (const auto& entry : entries)
    bytes += tar_bytes(entry);
  bytes.append(2 * block_size, '\0'); // marks the end of the archive

  const Pipe bzip2(popen(("bzip2 -c >'" + path + "'").c_str(), "w"));
  ASSERT_TRUE(bzip2);
  ASSERT_EQ(bytes.size(), std::fwrite(bytes.data(), 1, bytes.size(), bzip2.get()));
}
