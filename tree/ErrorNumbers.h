// tree/ErrorNumbers.h: every error number the library leaves in a
// CErrorCollector, named once. A number is also the id of its language text
// (the host's ILggInterface::GetText), so the same constant names both.
// The parser is the first layer that reports errors; the function manager,
// the wrapper and the calculator above it use the same names. Internal.
#pragma once

namespace vkt {

constexpr int kErrBadFuncName = 1000;     // a call's name is no valid name, or no function has it
constexpr int kErrDigitsInName = 1001;    // a name that starts with digits goes on with something else
constexpr int kErrSyntax = 1003;          // syntax error, an operand an operator can't take, a body's 0
constexpr int kErrOutOfRange = 1004;      // a body's -1: a value out of range
constexpr int kErrMixedKinds = 1005;      // number and text mixed among operands, complex mode off
constexpr int kErrBadVarName = 1068;      // a word is neither a number nor a valid variable name
constexpr int kErrBrackets = 1070;        // brackets don't match
constexpr int kErrFunctionFailed = 1072;  // a host function failed without saying why

}  // namespace vkt
