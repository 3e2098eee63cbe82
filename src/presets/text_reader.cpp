#include "presets/text_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace brisel {
namespace {

constexpr std::uint8_t kLineFeed = 10;
constexpr std::uint8_t kCarriageReturn = 13;
constexpr std::uint8_t kBlank = 32;

bool isLineBreak(std::uint8_t character) {
  return character == kLineFeed || character == kCarriageReturn;
}

bool isDigit(std::uint8_t character) {
  return character >= '0' && character <= '9';
}

bool startsNumber(std::uint8_t character) {
  return isDigit(character) || character == '-' || character == 'e' || character == 'E';
}

bool isOfNumber(std::uint8_t character) {
  return startsNumber(character) || character == '.' || character == ',';
}

/// The longest prefix that is a number; 0 when there is none. Independent of the locale.
double toNumber(std::string_view text) {
  double number = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc::result_out_of_range) return number;
  // So few digits reach neither limit without an exponent, whose sign tells which one it was.
  const std::string_view tooFar(text.data(), result.ptr);
  const double magnitude = tooFar.find("e-") != tooFar.npos || tooFar.find("E-") != tooFar.npos
                               ? 0.0
                               : std::numeric_limits<double>::infinity();
  return tooFar.front() == '-' ? -magnitude : magnitude;
}

}  // namespace

std::optional<std::string> TextReader::ReadChars(std::size_t count) {
  if (atEnd()) return {};
  const auto part = bytes_.subspan(position_, std::min(count, bytes_.size() - position_));
  position_ += part.size();
  return std::string(part.begin(), part.end());
}

std::optional<char> TextReader::NextLine() {
  do {
    while (!atEnd() && !isLineBreak(peek())) ++position_;
    while (!atEnd() && isLineBreak(peek())) ++position_;
    if (atEnd()) return {};
  } while (peek() == ';');
  return static_cast<char>(peek());
}

std::optional<std::string> TextReader::ReadLineText() {
  std::string text;
  while (!atEnd() && peek() > kCarriageReturn)
    text.push_back(static_cast<char>(bytes_[position_++]));
  if (atEnd()) return {};
  ++position_;
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

TextReader::Token TextReader::ReadToken() {
  Token token{Status::Ok, {}};
  while (!atEnd() && peek() <= kBlank) ++position_;
  while (!atEnd() && peek() > kBlank) {
    const auto character = static_cast<char>(bytes_[position_++]);
    if (character == ']') return {Status::Bracket, {}};
    token.text.push_back(character);
  }
  if (atEnd()) {
    token.status = Status::End;
  } else {
    ++position_;
  }
  return token;
}

TextReader::Status TextReader::SkipToNumber() {
  for (; !atEnd(); ++position_) {
    if (startsNumber(peek())) return Status::Ok;
    if (peek() == ']') {
      ++position_;
      return Status::Bracket;
    }
  }
  return Status::End;
}

void TextReader::ReadNumber(float& value) {
  constexpr std::size_t kLongestNumber = 64;
  if (SkipToNumber() != Status::Ok) return;
  std::string text;
  while (!atEnd() && isOfNumber(peek()) && text.size() < kLongestNumber) {
    text.push_back(static_cast<char>(bytes_[position_++]));
  }
  if (atEnd()) return;
  if (bytes_[position_++] == ']') return;
  value = static_cast<float>(toNumber(text));
}

}  // namespace brisel
