// CGmp.h: CGmp, the library's number: a signed decimal held as digit text.
//
// The value is m_strInt read as a natural number plus m_strDec read as a
// fraction (its first digit is the tenths), negated when m_bNeg is 1. Both
// strings hold only the units '0'..'9': no sign, point or separator. Hosts
// read and write the three fields directly.
//
// Three states are kept apart: null (both strings empty: a default object,
// the product by zero), zero (every digit 0, null included) and non-zero. An
// empty m_strInt beside decimals means the same as the digit 0.
//
// Limits: GetMaxFullLength digits in all and GetMaxDecLength decimals, 60 and
// 40, or 14 and 12 while the host sets g_bLS. Validate enforces them by
// cutting (never rounding), decimals first; an integer part longer than the
// full length is kept whole and stands alone. add, minu and a rounding up are
// exact and may leave more digits until a later operation validates.
// Division cuts at the decimal limit; Round and GetString round half up on
// the magnitude, judged by the one digit behind the cut.
//
// Nothing throws except exhausted memory; bad input gives a result, not a
// fault. No locks: distinct objects may be used on distinct threads.
#pragma once

#include <cstdint>

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Types.h"

class IStreamOutput;
class IStreamInput;

// Reduced-precision mode for the whole process: 0 (the default) gives the
// limits 60/40, any other value 14/12. Only hosts write it; it is read afresh
// by every operation, so a change applies from the next operation on.
extern VKTCALC_API int g_bLS;

class VKTCALC_API CGmp {
 public:
  // How strictly SetString takes a text as a number. None looks for the
  // number inside the text first; Normal and Full read the text as it stands.
  enum Enum_PureDigitCheckStrict {
    CheckStrict_None = 0,
    CheckStrict_Normal = 1,
    CheckStrict_Full = 2,
  };

  CString m_strInt;  // digits before the point, most significant first
  CString m_strDec;  // digits after the point, tenths first
  int m_bNeg;        // 1 for a negative value, else 0

  // Construction. Text is read as SetString(text, CheckStrict_Full) and the
  // result of the parse is dropped.
  CGmp();
  CGmp(int value);
  CGmp(double value);
  CGmp(const char16_t* text);
  CGmp(const CGmp* other);  // a copy; null gives a null value
  CGmp(const CGmp& other);
  virtual ~CGmp();

  // The virtual slots, in this order; the operators reach the arithmetic
  // only through them.
  virtual void Neg();  // flips the sign of a non-zero value; a zero gets 0
  // -1, 0 or 1. A null b counts as a null value; with flag above 0 a null
  // value sorts just below zero instead of equal to it. Decimals count up to
  // the 39th place (11th with g_bLS).
  virtual int Compare(CGmp* b, int flag);
  virtual void Round(int n);  // half up on the magnitude to n decimals
  virtual void add(CGmp* b);   // null or zero b: nothing happens
  virtual void minu(CGmp* b);  // null or zero b: nothing happens
  // Zero b gives the null value; a null b does nothing. Partial products of
  // b's decimal digits are cut to the limits before the digit multiplies
  // them, so a product of long decimals is not always the exact one cut.
  virtual void mul(CGmp* b);
  // Cut (never rounded) at the decimal limit. 1 on success; 0 for a null or
  // zero b, and then nothing changes.
  virtual int div(CGmp* b);
  virtual void mod(CGmp& b);  // the remainder takes the sign of b; zero b: nothing
  virtual int sqrt();         // 0 for a negative value, which stays; else 1
  // Replaces the value; 1 when the text was a number, else 0 with the value
  // gathered up to the fault. A negative zero gives 0.
  virtual int SetString(const char16_t* text, Enum_PureDigitCheckStrict strict);
  // nDec below 0: all decimals; otherwise exactly that many (at most the
  // decimal limit), rounded half up. bSep groups the integer digits by 3.
  virtual void GetString(CString& out, int nDec, int bSep);
  virtual void Serialize(IStreamOutput* out);
  virtual int Deserialize(IStreamInput* in);  // 1, or 0 at the first failed read

  // Setting; none of these validates.
  void Empty();  // null, not negative
  void Set(int value);
  void Set(long value);  // 64-bit; every value including the lowest
  void Set(long long value);
  void Set(double value);  // at most 15 digits, the decimals rounded
  void Set(const CGmp* other);
  CGmp& operator=(const CGmp& other);
  CGmp& operator=(int value);

  // Tests.
  bool IsNull() const;
  bool IsZero() const;
  static bool IsZero(const CGmp* value);        // null pointer counts as zero
  static bool IsZero(const char16_t* text);     // through the text constructor
  bool IsOne() const;                           // 1 or -1
  int IsOddInt() const;                         // low bit of the last integer digit

  // The limits, read afresh from g_bLS at each call.
  static int GetMaxFullLength() { return g_bLS ? 14 : 60; }
  static int GetMaxDecLength() { return g_bLS ? 12 : 40; }

  // Enforces the invariants: no trailing 0 in m_strDec, no leading 0 in
  // m_strInt (a lone 0 stays, several become empty), the limits, no sign on
  // a zero. Cuts towards zero.
  void Validate();
  void Mul_10exp(int n);  // point n places right; n below 1 or zero value: nothing
  void Div_10exp(int n);  // point n places left, then Validate cuts
  static void Round(CString& text, int n);  // text replaced by itself rounded

  // Machine numbers and text conversions.
  std::int64_t GetInt64() const;  // rounded by the first decimal alone
  double GetDouble() const;
  static double Str2Double(const char16_t* text, int bStripComma);
  static int Str2Int(const char16_t* text);  // rounded half up on the magnitude
  static void Double2Str(CString& out, double value, int nDec, int bLimit, int bKeepZeros,
                         int bKeepZeroValue);

  // Arrays of heap numbers: Init deletes every element (last first), sets
  // the size to n and fills it with new null numbers; Destroy deletes every
  // element and leaves null slots.
  static void InitGmpArray(CArray<CGmp*, CGmp*>& array, int n);
  static void DestroyGmpArray(CArray<CGmp*, CGmp*>& array);

  // Operators; an operand that is the object itself is copied first.
  CGmp& operator+=(const CGmp& b);
  CGmp& operator+=(int b);
  CGmp& operator+=(const CString& text);
  CGmp& operator-=(const CGmp& b);
  CGmp& operator-=(int b);
  CGmp& operator*=(const CGmp& b);
  CGmp& operator*=(int b);
  CGmp& operator/=(const CGmp& b);  // division by zero leaves the value, silently
  CGmp& operator/=(int b);
  bool operator==(const CGmp& b) const;
  bool operator==(int b) const;
  bool operator>(const CGmp& b) const;
  bool operator>(int b) const;
  bool operator<(const CGmp& b) const;
  bool operator<(int b) const;
  bool operator>=(int b) const;
  bool operator<=(int b) const;

 private:
  void add_NoNeg(CGmp* b);      // magnitudes added, the sign stays
  void minu_NoNeg(CGmp* b);     // magnitude of b taken from the larger one of this
  void mul_NoNeg(CGmp* b);      // magnitude product; the caller sets the sign
  void mul_1To9(int k);         // magnitude times one digit
  int Compare_NotNeg(CGmp& b);  // over the magnitudes
};
