// Lanes: the few vector operations that shading and blending are written with. A kernel is written
// once, as a template over an instruction set, and compiled in a file of its own for each of them
// (plain.cpp, sse2.cpp ...). Every operation rounds exactly as its scalar counterpart, so the lanes
// never change a byte.
#pragma once

#include <cstdint>
#include <cstring>
#include <utility>

namespace brisel {

template <class T, int kLanes>
struct VectorOf {
  typedef T Type __attribute__((vector_size(kLanes * sizeof(T))));
};

/// `Isa` gives the number of lanes and the operations that vector arithmetic alone does not
/// express: minimum, maximum, squareRoot, truncated, floored, fused, any, those on bytes, and all
/// that takes a mask.
template <class Isa>
struct Lanes {
  static constexpr int kCount = Isa::kLanes;
  using Float = typename VectorOf<float, kCount>::Type;
  using Int = typename VectorOf<std::int32_t, kCount>::Type;
  using Word = typename VectorOf<std::uint32_t, kCount>::Type;

  static Float splat(float value) { return value - Float{}; }

  /// first, first + 1, first + 2 ...
  static Int steps(std::int32_t first) {
    Int index{};
    for (int i = 0; i < kCount; ++i) index[i] = i;
    return index + first;
  }

  static Float load(const float* from) {
    Float v;
    std::memcpy(&v, from, sizeof v);
    return v;
  }

  static void store(float* to, Float v) { std::memcpy(to, &v, sizeof v); }
  static void store(std::int32_t* to, Int v) { std::memcpy(to, &v, sizeof v); }

  static Word loadWords(const void* from) {
    Word words;
    std::memcpy(&words, from, sizeof words);
    return words;
  }
  static void storeWords(void* to, Word words) { std::memcpy(to, &words, sizeof words); }

  /// Some of the lanes.
  using Mask = typename Isa::Mask;
  using Words = typename Isa::Words;  // Word in the instruction set's own type

  /// Lanes first, first + 1 ... first + count - 1, none of them beyond the last.
  static Mask lanes(int first, int count) { return Isa::lanes(first, count); }

  /// `a` in the lanes of the mask, `b` elsewhere.
  template <class Vector>
  static Vector select(Mask mask, Vector a, Vector b) {
    return reinterpret_cast<Vector>(
        Isa::select(mask, reinterpret_cast<Words>(a), reinterpret_cast<Words>(b)));
  }

  /// The lanes of the mask from memory, and `words` elsewhere. `origin` is where lane 0 lies or
  /// would lie; only the lanes of the mask are touched.
  static Word loadWords(Mask mask, const void* origin, Word words) {
    return reinterpret_cast<Word>(Isa::load(mask, origin, reinterpret_cast<Words>(words)));
  }
  static void storeWords(Mask mask, void* origin, Word words) {
    Isa::store(mask, origin, reinterpret_cast<Words>(words));
  }

  /// The same where each lane has two words: for half of the lanes, the first (0) or second (1).
  template <int kHalf>
  static Word loadPairs(Mask mask, const void* origin, Word words) {
    return reinterpret_cast<Word>(
        Isa::template loadPairs<kHalf>(mask, origin, reinterpret_cast<Words>(words)));
  }
  template <int kHalf>
  static void storePairs(Mask mask, void* origin, Word words) {
    Isa::template storePairs<kHalf>(mask, origin, reinterpret_cast<Words>(words));
  }

  /// Every second word of two vectors in a row, from the first (0) or the second (1) on.
  template <int kFirst>
  static Word everySecond(Word low, Word high) {
    return everySecond<kFirst>(low, high, kSequence);
  }
  /// even[0], odd[0], even[1], odd[1] ...: the first (0) or second (1) vector of these words.
  template <int kHalf>
  static Word inTurn(Word even, Word odd) {
    return inTurn<kHalf * kCount>(even, odd, kSequence);
  }

  /// table[index] in each lane; the table is as long as there are lanes, or of four, and each index
  /// lies in it.
  static Float picked(const float* table, Int index) {
    return Isa::picked(table, reinterpret_cast<Words>(index));
  }
  static Int picked(const std::int32_t* table, Int index) {
    return reinterpret_cast<Int>(
        Isa::picked(reinterpret_cast<const float*>(table), reinterpret_cast<Words>(index)));
  }

  static Float pickedOfFour(const float* four, Int index) {
    return Isa::pickedOfFour(four, reinterpret_cast<Words>(index));
  }

  static Float squareRoot(Float v) { return Isa::squareRoot(v); }

  /// Whether any lane of a comparison's result is set.
  static bool any(Int mask) { return Isa::any(reinterpret_cast<Words>(mask)); }
  /// any(a < b) and any(!(a < b)), without a vector for the comparison's result.
  static bool anyBelow(Float a, Float b) { return Isa::anyBelow(a, b); }
  static bool anyNotBelow(Float a, Float b) { return Isa::anyNotBelow(a, b); }

  /// The lesser; `b` when either is not a number. maximum likewise.
  static Float minimum(Float a, Float b) { return Isa::minimum(a, b); }
  static Float maximum(Float a, Float b) { return Isa::maximum(a, b); }

  static Float absolute(Float v) {
    const Int magnitude = reinterpret_cast<Int>(v) & 0x7fffffff;
    return reinterpret_cast<Float>(magnitude);
  }

  static Float clamp(Float v, float low, float high) {
    return minimum(maximum(v, splat(low)), splat(high));
  }

  static Int lesser(Int a, Int b) { return a < b ? a : b; }
  static Int greater(Int a, Int b) { return a > b ? a : b; }
  static Int clamp(Int v, std::int32_t low, std::int32_t high) {
    return lesser(greater(v, Int{} + low), Int{} + high);
  }

  /// Clamps to [0, 1]; not-a-number becomes 0.
  static Float clampUnit(Float v) { return minimum(maximum(v, Float{}), splat(1.0f)); }

  /// Byte `kByte` of each word, byte 0 being the lowest.
  template <int kByte>
  static Int byteOf(Word words) {
    return reinterpret_cast<Int>(Isa::template byteOf<kByte>(reinterpret_cast<Words>(words)));
  }
  /// Words of these bytes, each limited to 0..255; none may lie beyond 16 bits.
  static Word joinBytes(Int byte0, Int byte1, Int byte2, Int byte3) {
    return reinterpret_cast<Word>(
        Isa::joinBytes(reinterpret_cast<Words>(byte0), reinterpret_cast<Words>(byte1),
                       reinterpret_cast<Words>(byte2), reinterpret_cast<Words>(byte3)));
  }
  /// Each byte's sum, at most 255, and the greater of each two.
  static Word addBytes(Word a, Word b) {
    return reinterpret_cast<Word>(
        Isa::addBytes(reinterpret_cast<Words>(a), reinterpret_cast<Words>(b)));
  }
  static Word maximumBytes(Word a, Word b) {
    return reinterpret_cast<Word>(
        Isa::maximumBytes(reinterpret_cast<Words>(a), reinterpret_cast<Words>(b)));
  }

  static Float toFloat(Int v) { return __builtin_convertvector(v, Float); }

  /// Truncates toward zero; every lane must lie within the range of a 32-bit integer.
  static Int toInt(Float v) { return __builtin_convertvector(v, Int); }
  static Float truncated(Float v) { return Isa::truncated(v); }
  /// The same without a limit.
  static Float truncatedAny(Float v) { return Isa::truncatedAny(v); }
  static Float floored(Float v) { return Isa::floored(v); }

  /// a * b + c, of floats or doubles, rounded once or twice: only for what comes to the same either
  /// way.
  template <class Vector>
  static Vector fused(Vector a, Vector b, Vector c) {
    return Isa::fused(a, b, c);
  }

  /// v / divisor, where the caller has 1 / divisor at hand. Where the quotient is a normal number
  /// its bits are those of the division; others may be not-a-number.
  static Float quotient(Float v, float divisor, float reciprocal) {
    return Isa::quotient(v, splat(divisor), splat(reciprocal));
  }

  /// Truncates toward zero and saturates; not-a-number becomes the least integer.
  static Int toIntSaturated(Float v) {
    constexpr float kMost = 2147483520.0f;
    return toInt(clamp(v, -kMost, kMost));
  }

 private:
  static constexpr std::make_integer_sequence<int, kCount> kSequence{};

  template <int kOffset, int... i>
  static Word everySecond(Word low, Word high, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(low, high, (2 * i + kOffset)...);
  }
  template <int kFirst, int... i>
  static Word inTurn(Word even, Word odd, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(even, odd, ((kFirst + i) / 2 + (kFirst + i) % 2 * kCount)...);
  }
};

}  // namespace brisel
