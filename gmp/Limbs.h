// gmp/Limbs.h: natural numbers in base 10^9, the fast road of CGmp's
// multiplication and division. Not installed; nothing under include/ may
// include it.
//
// A number is an array of limbs below 10^9, least significant first; a
// normalised count has no zero limb on top (0 is the empty array). Digit text
// goes in and out in groups of nine, so no binary conversion is needed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vkt::limbs {

using Limb = std::uint32_t;
constexpr Limb kBase = 1000000000u;
constexpr int kLimbDigits = 9;

constexpr int LimbsFor(int digitCount) { return (digitCount + kLimbDigits - 1) / kLimbDigits; }

// Scratch space: on the stack up to kInline elements, on the heap above.
// Contents start undefined.
template <class T, int kInline>
class Scratch {
 public:
  explicit Scratch(int size) : m_data(m_inline) {
    if (size > kInline) {
      m_heap.reset(new T[static_cast<std::size_t>(size)]);
      m_data = m_heap.get();
    }
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  T* Data() { return m_data; }

 private:
  T m_inline[kInline];
  std::unique_ptr<T[]> m_heap;
  T* m_data;
};

using LimbBuffer = Scratch<Limb, 36>;      // numbers of some 300 digits
using UnitBuffer = Scratch<char16_t, 320>;  // their digit text

// The digits of hi, then those of lo, then `zeros` zeros, read as one number.
// All units must be digits: callers check, since a limb of 10^9 or more
// would break the division. out holds LimbsFor(nHi + nLo + zeros) limbs;
// returns the normalised count.
int FromDigits(const char16_t* hi, int nHi, const char16_t* lo, int nLo, int zeros, Limb* out);

// Writes the decimal digits of a without leading zeros (nothing for 0) into
// out, which holds 9 * n units; returns the count written.
int ToDigits(const Limb* a, int n, char16_t* out);

// out = a * b; out holds na + nb limbs and must not overlap a or b. Returns
// the normalised count.
int Multiply(const Limb* a, int na, const Limb* b, int nb, Limb* out);

// q = u div v, the remainder dropped. v is normalised with nv >= 1; q holds
// nu - nv + 1 limbs (nothing when nu < nv). Returns the normalised count.
int Divide(const Limb* u, int nu, const Limb* v, int nv, Limb* q);

}  // namespace vkt::limbs
