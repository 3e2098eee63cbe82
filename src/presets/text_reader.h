// The reader of preset files: lines, tokens and numbers of a file that was read whole.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace brisel {

/// Bytes are 8-bit characters. An operation that meets the end of the file fails, unless it says
/// otherwise, and leaves the position at the end.
class TextReader {
 public:
  enum class Status { Ok, Bracket, End };

  struct Token {
    Status status;     // Bracket: a "]" came, and was consumed; End: the file ended
    std::string text;  // without meaning after a bracket
  };

  /// `bytes` must outlive the reader.
  explicit TextReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::size_t position() const { return position_; }
  void setPosition(std::size_t position) { position_ = position; }

  /// Up to `count` characters; fails only when the position is at the end.
  std::optional<std::string> ReadChars(std::size_t count);

  /// Goes to the start of the next line that is neither empty nor a comment (";"), and returns its
  /// first character, which stays unread.
  std::optional<char> NextLine();

  /// The text up to the first character of code 13 or less, which is consumed; without trailing
  /// spaces.
  std::optional<std::string> ReadLineText();

  /// The next word, blanks and line ends before it passed over; the character that ends it is
  /// consumed. The end of the file ends a word too.
  Token ReadToken();

  /// Stops before the next digit, "-", "e" or "E".
  Status SkipToNumber();

  /// The next number. A number that "]" or the end of the file ends does not count, and leaves
  /// `value` as it is.
  void ReadNumber(float& value);

 private:
  bool atEnd() const { return position_ == bytes_.size(); }
  std::uint8_t peek() const { return bytes_[position_]; }

  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace brisel
