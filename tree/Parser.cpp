// tree/Parser.cpp: text to tree. A hand-written scanner makes one flat run
// of operands and operators per nesting level, recursing only into brackets
// and calls; precedence is the evaluator's business. The checks of the
// finished runs follow in CheckTree. Also the CUtilityCalc entries.
//
// Any text is accepted as input: the work is linear in its length (the
// quoted ranges are searched by bisection, the padding and the repair of
// backslashes are single passes), and nesting is bounded by kMaxNesting.
#include "tree/Parser.h"

#include <algorithm>
#include <memory>
#include <string>

#include "CErrorCollector.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "platform/Config.h"
#include "tree/CCalcTreeNode.h"

namespace vkt {
namespace {

bool IsQuote(char16_t ch) { return ch == u'\'' || ch == u'"'; }
bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

// The quoted stretches of a text, as FindQuotes gives them: sorted and
// disjoint, first and last index both inside.
class QuotedRanges {
 public:
  explicit QuotedRanges(CString& text) { Find(text); }
  void Find(CString& text) { CUtilityCalc::FindQuotes(text, m_starts, m_ends); }

  bool Contains(int pos) const {
    const int count = std::min(m_starts.GetSize(), m_ends.GetSize());
    if (count == 0 || pos < 0) return false;
    const UINT* first = m_starts.GetData();
    const UINT* behind = std::upper_bound(first, first + count, static_cast<UINT>(pos));
    if (behind == first) return false;
    return static_cast<UINT>(pos) <= m_ends[static_cast<int>(behind - first) - 1];
  }

 private:
  CUIntArray m_starts;
  CUIntArray m_ends;
};

// Puts a blank on each side of every "&&" and "||" outside quotes that lacks
// one, since "&" and "|" are word characters to the scanner. The start of
// the text counts as a blank before, the end as one behind. Only texts of
// three units or more; false when nothing changed.
bool IsDoubledPairAt(const CString& text, int i) {
  return IsDoubledLogicalUnit(text[i]) && text[i + 1] == text[i];
}

bool PadLogicOperators(CString& text, const QuotedRanges& quoted) {
  const int length = text.GetLength();
  if (length < 3) return false;
  int first = 0;
  while (first < length - 1 && !IsDoubledPairAt(text, first)) ++first;
  if (first == length - 1) return false;  // no pair: the common case, no copy
  std::u16string padded;
  padded.reserve(static_cast<std::size_t>(length) + 16);
  bool changed = false;
  int i = 0;
  // Blanks go in outside quotes only, so the quoted ranges of the padded
  // text are those of the original, shifted: they are looked up in the
  // original's coordinates.
  while (i < length - 1) {
    const char16_t c = text[i];
    const bool pair = IsDoubledPairAt(text, i);
    if (!pair) {
      padded.push_back(c);
      ++i;
      continue;
    }
    if (!quoted.Contains(i)) {
      if (!padded.empty() && padded.back() != u' ') {
        padded.push_back(u' ');
        changed = true;
      }
      padded.push_back(c);
      padded.push_back(c);
      if (i + 2 < length && text[i + 2] != u' ') {
        padded.push_back(u' ');
        changed = true;
      }
    } else {
      padded.push_back(c);
      padded.push_back(c);
    }
    i += 2;
  }
  if (!changed) return false;
  for (; i < length; ++i) padded.push_back(text[i]);
  text = CString(std::u16string_view(padded));
  return true;
}

// A failed parse is tried again with a backslash put in front of each
// closing quote that a single backslash hid ('C:\dir\' then reads as a
// string). The walk knows no escapes. False when nothing was put in.
bool RepairClosingBackslashes(const CString& text, CString& repaired) {
  const int length = text.GetLength();
  std::u16string out;
  out.reserve(static_cast<std::size_t>(length) + 16);
  bool inserted = false;
  char16_t quote = 0;
  int open = 0;
  for (int i = 0; i < length; ++i) {
    const char16_t c = text[i];
    if (quote == 0) {
      if (IsQuote(c)) {
        quote = c;
        open = i;
      }
    } else if (c == quote) {
      const int inside = i - open - 1;
      const bool hidden = inside > 0 && text[i - 1] == u'\\' && !(inside >= 2 && text[i - 2] == u'\\');
      if (hidden) {
        out.push_back(u'\\');
        inserted = true;
      }
      quote = 0;
    }
    out.push_back(c);
  }
  if (inserted) repaired = CString(std::u16string_view(out));
  return inserted;
}

enum class TokenKind { None, Quoted, Operator, Word, Open, Close, Comma };
enum class Ended { Neither, Comma, Close };

struct Token {
  TokenKind kind = TokenKind::None;
  CString text;     // the token; for Open the function name, perhaps empty
  int start = -1;   // first unit that is no blank; -1 for blanks only
  int end = 0;      // where the scan stopped
  int bracket = 0;  // Open: index of the bracket
};

// Which unit of a word the name tests refuse, with white space at either
// end refused too (the name tests trim it away and would pass "\tA1").
// -1 when the word is a valid variable name.
int BadVarNameUnit(const CString& word, int chinese) {
  CString left(word);
  if (left.TrimLeft().GetLength() != word.GetLength()) return 0;
  int bad = 0;
  if (!CUtilityCalc::IsValidVarName(word, chinese, 1, 1, bad)) return bad;
  CString right(word);
  const int kept = right.TrimRight().GetLength();
  return kept != word.GetLength() ? kept : -1;
}

bool IsValidFunctionName(const CString& word, int chinese) {
  CString name(word);
  if (CString(word).Trim().GetLength() != word.GetLength()) return false;
  return CUtilityCalc::IsValidFuncName(name, chinese) != 0;
}

// ---- The scanner and the token loop ---------------------------------------

// The alias ("!=", "==") that starts at unit i, or null.
const OperatorAlias* AliasAt(const char16_t* units, int length, int i) {
  if (i + 1 >= length) return nullptr;
  for (const OperatorAlias& alias : kOperatorAliases)
    if (units[i] == alias.spelling[0] && units[i + 1] == alias.spelling[1]) return &alias;
  return nullptr;
}

bool StartsAlias(char16_t c) {
  for (const OperatorAlias& alias : kOperatorAliases)
    if (c == alias.spelling[0]) return true;
  return false;
}

// "not" in any case, the one word operator that may stand before a bracket.
bool IsNotWord(const CString& word) {
  const OperatorInfo* op = FindOperator(word);
  return op != nullptr && op->word && op->code == kOpNot;
}

enum class ScanState { None, Quoted, Operator, Word };
enum class ScanStep { More, Done, Failed };

class Parser {
 public:
  Parser(const CString& text, const QuotedRanges& quoted, CErrorCollector* errors)
      : m_text(text), m_units(text.GetString()), m_length(text.GetLength()), m_quoted(quoted),
        m_errors(errors),
        m_chinese(CUtilityCalc::Calc_IsChineseEnabled()) {}

  bool ParseTokens(CCalcTreeNode* node, int position, int& endPos, Ended& ended, int depth);

 private:
  bool Scan(int position, Token& token);
  // One unit at i: moves i and state on (More), ends the token (Done), or
  // refuses the text (Failed, with the error set).
  ScanStep ScanUnit(int& i, ScanState& state, Token& token);
  ScanStep ScanPunctuation(int& i, ScanState state, Token& token);  // ( ) ,
  // Ends the token at i as kind; words, quoted texts and calls take their
  // text from the source here.
  ScanStep End(Token& token, int i, TokenKind kind, ScanState state);
  ScanStep EndInState(Token& token, int i, ScanState state);  // as the state says
  bool ParseArguments(CCalcTreeNode* call, int position, int& endPos, int depth);
  bool Classify(CCalcTreeNode* node, const Token& token, int depth);
  bool NameError(int number, const Token& token, int at);

  bool Fail(int number, int position) {
    if (m_errors != nullptr) m_errors->SetCodePos(number, position);
    return false;
  }

  const CString& m_text;
  const char16_t* m_units;  // m_text's units, for the scanner's inner loop
  const int m_length;
  const QuotedRanges& m_quoted;
  CErrorCollector* m_errors;
  const int m_chinese;  // Chinese names, read once per parse
};

// token := quoted+ | operator | word | word? '(' | ')' | ','
// One token from `position` on; blanks (U+0020 only) separate tokens and may
// stand inside an operator ("> =" is ">="). False with 1003 for a quote
// directly behind a word.
bool Parser::Scan(int i, Token& token) {
  ScanState state = ScanState::None;
  token.text.Empty();
  token.start = -1;
  token.bracket = 0;
  while (i < m_length) {
    const ScanStep step = ScanUnit(i, state, token);
    if (step == ScanStep::Failed) return false;
    if (step == ScanStep::Done) return true;
  }
  EndInState(token, i, state);
  return true;
}

ScanStep Parser::End(Token& token, int i, TokenKind kind, ScanState state) {
  token.kind = kind;
  token.end = i;
  if (kind == TokenKind::Word || kind == TokenKind::Quoted || (kind == TokenKind::Open && state == ScanState::Word))
    token.text = m_text.Mid(token.start, (kind == TokenKind::Open ? token.bracket : i) - token.start);
  return ScanStep::Done;
}

ScanStep Parser::EndInState(Token& token, int i, ScanState state) {
  switch (state) {
    case ScanState::Quoted: return End(token, i, TokenKind::Quoted, state);
    case ScanState::Operator: return End(token, i, TokenKind::Operator, state);
    case ScanState::Word: return End(token, i, TokenKind::Word, state);
    case ScanState::None: break;
  }
  return End(token, i, TokenKind::None, state);
}

ScanStep Parser::ScanUnit(int& i, ScanState& state, Token& token) {
  const char16_t c = m_units[i];
  if (m_quoted.Contains(i)) {
    if (token.start < 0) token.start = i;
    if (state == ScanState::Word) {  // a quote directly behind a word
      Fail(kErrSyntax, i);
      return ScanStep::Failed;
    }
    if (state == ScanState::Operator) return End(token, i, TokenKind::Operator, state);
    state = ScanState::Quoted;
    ++i;
    return ScanStep::More;
  }
  if (state == ScanState::Quoted) return End(token, i, TokenKind::Quoted, state);
  if (c == u' ') {
    if (state == ScanState::Word) return End(token, i, TokenKind::Word, state);
    ++i;
    return ScanStep::More;
  }
  if (token.start < 0) token.start = i;

  if (const OperatorAlias* alias = AliasAt(m_units, m_length, i)) {  // "!=", "=="
    if (state == ScanState::Word) return End(token, i, TokenKind::Word, state);
    token.text = alias->means;
    i += 2;
    state = ScanState::Operator;
    return ScanStep::More;
  }
  if (StartsAlias(c) && i + 1 < m_length && state == ScanState::None) {  // "!" or "=" alone
    token.text = c;
    ++i;
    return End(token, i, TokenKind::Operator, state);
  }
  if (c == u')' || c == u'(' || c == u',') return ScanPunctuation(i, state, token);
  if (IsSingleOperatorUnit(c)) {  // + - * /
    if (state != ScanState::None) return EndInState(token, i, state);
    token.text = c;
    ++i;
    return End(token, i, TokenKind::Operator, state);
  }
  if (IsComparisonUnit(c)) {  // = > <, which combine: ">=", "> ="
    if (state == ScanState::Word) return End(token, i, TokenKind::Word, state);
    token.text += c;
    state = ScanState::Operator;
    ++i;
    return ScanStep::More;
  }
  if (state == ScanState::Operator) return End(token, i, TokenKind::Operator, state);
  state = ScanState::Word;
  ++i;
  return ScanStep::More;
}

ScanStep Parser::ScanPunctuation(int& i, ScanState state, Token& token) {
  const char16_t c = m_units[i];
  if (c == u'(') {
    if (state == ScanState::Operator) return End(token, i, TokenKind::Operator, state);
    if (state == ScanState::Word && IsNotWord(m_text.Mid(token.start, i - token.start))) {
      token.text = m_text.Mid(token.start, i - token.start);  // not(a): the operator, then a bracket
      return End(token, i, TokenKind::Operator, state);
    }
    token.bracket = i;
    ++i;
    return End(token, i, TokenKind::Open, state);
  }
  if (state != ScanState::None) return EndInState(token, i, state);
  ++i;
  return End(token, i, c == u')' ? TokenKind::Close : TokenKind::Comma, state);
}

// args := arg (',' arg)* ')'
bool Parser::ParseArguments(CCalcTreeNode* call, int position, int& endPos, int depth) {
  Ended ended = Ended::Neither;
  for (bool first = true;; first = false) {
    if (!first && ended == Ended::Close) {
      endPos = position;
      return true;
    }
    // An argument that ran into the end of the text was ended by neither.
    if (position >= m_length) return Fail(kErrBrackets, position);
    auto owned = std::make_unique<CCalcTreeNode>(call, kKindArgument);
    CCalcTreeNode* argument = owned.get();
    argument->m_Pos = position;
    call->AddChild(argument);
    owned.release();  // the call owns it now
    int argumentEnd = position;
    if (!ParseTokens(argument, position, argumentEnd, ended, depth)) return false;
    position = argumentEnd;
  }
}

// run := (operand | operator)*, ended by the end of the text, by ')' in a
// bracket or an argument, or by ',' in an argument.
bool Parser::ParseTokens(CCalcTreeNode* node, int position, int& endPos, Ended& ended, int depth) {
  ended = Ended::Neither;
  endPos = position;
  if (node->m_Kind == kKindFunction) return ParseArguments(node, position, endPos, depth);

  Token token;
  for (;;) {
    if (position >= m_length) {
      if (node->m_Kind == kKindBracket) return Fail(kErrBrackets, node->m_Pos);
      return true;
    }
    if (!Scan(position, token)) return false;
    position = endPos = token.end;

    if (token.kind == TokenKind::Close) {
      if (node->m_Kind != kKindArgument && node->m_Kind != kKindBracket)
        return Fail(kErrBrackets, token.start);
      ended = Ended::Close;
      return true;
    }
    if (token.kind == TokenKind::Comma) {
      if (node->m_Kind != kKindArgument) return Fail(kErrSyntax, token.start);
      ended = Ended::Comma;
      return true;
    }

    auto child = std::make_unique<CCalcTreeNode>(node);
    // Chosen: a token of blanks alone (only where the text was not trimmed)
    // stands where the scan stopped.
    child->m_Pos = token.start >= 0 ? token.start : token.end;
    if (!Classify(child.get(), token, depth)) return false;
    CCalcTreeNode* added = child.get();
    if (node->AddChild(added) < 0) return false;
    child.release();

    const int count = node->GetChildCount();
    if (count >= 2 && !added->IsOperator() && node->GetChild(count - 2)->GetKind() != kKindOperator)
      return Fail(kErrSyntax, added->m_Pos);

    if (token.kind == TokenKind::Open) {
      Ended inner = Ended::Neither;
      if (!ParseTokens(added, position, position, inner, depth + 1)) return false;
      endPos = position;
    }
  }
}

// Gives the node its kind and text from the token, or reports why not.
bool Parser::Classify(CCalcTreeNode* node, const Token& token, int depth) {
  if (token.kind == TokenKind::Open) {
    // Nesting bound: past kMaxNesting brackets and calls the parse fails with
    // 1003 (syntax) at the bracket that goes too deep. 1003 rather than 1070:
    // the brackets do match, the text is only more than the library takes.
    // This keeps the parser's recursion (two frames a call) and every
    // recursive walk of a parsed tree within a fixed stack.
    if (depth + 1 > kMaxNesting) return Fail(kErrSyntax, token.bracket);
    if (token.text.IsEmpty()) {
      node->m_Kind = kKindBracket;
      return true;
    }
    if (!IsValidFunctionName(token.text, m_chinese)) return NameError(kErrBadFuncName, token, token.start);
    node->SetText(token.text);
    node->m_Kind = kKindFunction;
    return true;
  }

  const CString& text = token.text;
  // A word token can only spell a logical operator ("and", "&&", "!"...):
  // every other operator unit ends a word.
  if (token.kind == TokenKind::Operator || FindOperator(text) != nullptr) {
    if (!node->SetOperator(text)) return Fail(kErrSyntax, token.start + 1);
    node->m_Kind = kKindOperator;
    return true;
  }

  if (token.kind == TokenKind::Quoted) {
    node->SetText(text);
    node->m_Kind = kKindText;
    return true;
  }

  // A word, or blanks alone (an empty text, which counts as a number).
  if (CUtilityCalc::IsPureNumber(text, 0, CGmp::CheckStrict_None, 0)) {
    node->SetNumberText(text);
    return true;
  }
  const int bad = BadVarNameUnit(text, m_chinese);
  if (bad >= 0) return NameError(kErrBadVarName, token, token.start + bad);
  node->SetText(text);
  node->m_Kind = kKindVariable;
  return true;
}

// Errors 1000 and 1068, refined: a name of digits that goes on with
// something else is 1001 at the first unit that is no digit.
bool Parser::NameError(int number, const Token& token, int at) {
  const CString& text = token.text;
  if (text.GetLength() >= 2 && IsDigit(text[0])) {
    for (int i = 1; i < text.GetLength(); ++i)
      if (!IsDigit(text[i])) return Fail(kErrDigitsInName, token.start + i);
  }
  return Fail(number, at);
}

// ---- The checks of a finished parse ---------------------------------------

int PositionOf(ICalcTreeNode* node) {
  CCalcTreeNode* impl = CCalcTreeNode::From(node);
  return impl != nullptr ? impl->m_Pos : 0;
}

unsigned char OpCodeOf(ICalcTreeNode* node) {
  CCalcTreeNode* impl = CCalcTreeNode::From(node);
  return impl != nullptr && impl->IsOperator() ? impl->m_OpCode : 0;
}

bool IsOperatorNode(ICalcTreeNode* node) { return node != nullptr && node->GetKind() == kKindOperator; }

int SyntaxError(CErrorCollector* errors, int position) {
  if (errors != nullptr) errors->SetErrorSyntax(position, nullptr);
  return 0;
}

}  // namespace

int CheckOperandKinds(ICalcTreeNode* node, CErrorCollector* errors) {
  if (node == nullptr || CUtilityCalc::Calc_IsComplexEnabled()) return 1;
  unsigned char first = 0;
  const int count = node->GetChildCount();
  for (int i = 0; i < count; ++i) {
    ICalcTreeNode* child = node->GetChild(i);
    if (child == nullptr) continue;
    const unsigned char kind = child->GetKind();
    if (kind != kKindNumber && kind != kKindText) continue;
    if (first == 0) {
      first = kind;
      continue;
    }
    if (kind == first) continue;
    if (errors == nullptr) return 0;
    if (errors->pszSource != nullptr || errors->pCurrentNode != nullptr) {
      errors->SetCodePos(kErrMixedKinds, PositionOf(child));
      errors->SetErrorText(kErrMixedKinds, nullptr);
    } else {
      // Chosen: without a context the number is set and the position left
      // as it was, as for the evaluator's other refusals of operands.
      CString text;
      node->GetExpression(text);
      errors->nError = kErrMixedKinds;
      errors->SetErrorText(kErrMixedKinds, text);
    }
    return 0;
  }
  return 1;
}

namespace {

// Recursive: trees come from the parser (hosts can re-kind and delete nodes
// but never add one), which bounds their depth by kMaxTreeDepth.
int CheckOperandKindsAt(ICalcTreeNode* node, CErrorCollector* errors, int depth) {
  VKTCALC_ASSERT(depth <= kMaxTreeDepth);
  if (!CheckOperandKinds(node, errors)) return 0;
  const int count = node != nullptr ? node->GetChildCount() : 0;
  for (int i = 0; i < count; ++i) {
    ICalcTreeNode* child = node->GetChild(i);
    if (child != nullptr && !CheckOperandKindsAt(child, errors, depth + 1)) return 0;
  }
  return 1;
}

int CheckGrammarAt(ICalcTreeNode* node, CErrorCollector* errors, int depth);

}  // namespace

int CheckOperandKindsDeep(ICalcTreeNode* node, CErrorCollector* errors) {
  return CheckOperandKindsAt(node, errors, 1);
}

int CheckGrammar(ICalcTreeNode* node, CErrorCollector* errors) { return CheckGrammarAt(node, errors, 1); }

namespace {

// Recursive like CheckOperandKindsAt.
int CheckGrammarAt(ICalcTreeNode* node, CErrorCollector* errors, int depth) {
  VKTCALC_ASSERT(depth <= kMaxTreeDepth);
  if (node == nullptr) return 1;
  const int count = node->GetChildCount();
  if (count == 0) return node->GetKind() == kKindBracket ? SyntaxError(errors, PositionOf(node)) : 1;
  ICalcTreeNode* first = node->GetChild(0);
  if (count == 1 && IsOperatorNode(first)) return SyntaxError(errors, PositionOf(first));

  for (int i = 0; i < count; ++i)
    if (!CheckGrammarAt(node->GetChild(i), errors, depth + 1)) return 0;

  if (IsOperatorNode(first) && OpCodeOf(first) != kOpSub && OpCodeOf(first) != kOpNot)
    return SyntaxError(errors, PositionOf(first));

  ICalcTreeNode* last = node->GetChild(count - 1);
  if ((node->GetKind() == kKindFunction || count == 1) && !IsOperatorNode(last)) return 1;

  for (int i = 1; i < count; ++i) {
    ICalcTreeNode* previous = node->GetChild(i - 1);
    ICalcTreeNode* current = node->GetChild(i);
    const bool previousOp = IsOperatorNode(previous);
    const bool currentOp = IsOperatorNode(current);
    if (previousOp && currentOp) {
      const unsigned char before = OpCodeOf(previous);
      const unsigned char now = OpCodeOf(current);
      if (IsLogicalCode(before) && now == kOpNot) continue;            // a && !b
      if (now == kOpSub && (IsComparisonCode(before) || IsLogicalCode(before))) continue;  // a > -b
      return SyntaxError(errors, PositionOf(current));
    }
    if (!previousOp && !currentOp) return SyntaxError(errors, PositionOf(current));
    if (currentOp && OpCodeOf(current) == kOpNot) return SyntaxError(errors, PositionOf(current));  // a !b
  }
  if (IsOperatorNode(last)) return SyntaxError(errors, PositionOf(last));
  return 1;
}

}  // namespace

int CheckTree(ICalcTreeNode* node, CErrorCollector* errors) {
  if (node == nullptr) return 1;
  if (!CheckOperandKinds(node, errors)) return 0;
  const int count = node->GetChildCount();
  for (int i = 0; i < count; ++i)
    if (!CheckOperandKindsDeep(node->GetChild(i), errors)) return 0;
  return CheckGrammar(node, errors);
}

int CCalcTreeNode::Parse(CString& text, CErrorCollector* errors) {
  Reset();
  m_Kind = kKindExpression;

  QuotedRanges quoted(text);
  if (PadLogicOperators(text, quoted)) quoted.Find(text);

  // Chosen: a NUL unit, which only a counted text can carry, is no
  // character of the language: 1003 at its position.
  const std::size_t nul = text.View().find(u'\0');
  if (nul != std::u16string_view::npos) {
    if (errors != nullptr) {
      errors->SetCodePos(kErrSyntax, static_cast<int>(nul));
      errors->SetErrorText(kErrSyntax, text);
    }
    return 0;
  }

  Parser parser(text, quoted, errors);
  int end = 0;
  Ended ended = Ended::Neither;
  if (!parser.ParseTokens(this, 0, end, ended, 0)) {
    if (errors != nullptr) errors->SetErrorText(errors->nError, text);
    return 0;
  }
  if (errors != nullptr) {
    errors->pszSource = text.GetString();
    errors->pCurrentNode = nullptr;
  }
  const int result = CheckTree(this, errors);
  if (errors != nullptr) {
    errors->pszSource = nullptr;
    errors->pCurrentNode = nullptr;
  }
  return result;
}

}  // namespace vkt

// ---- Entry points for hosts ---------------------------------------------------

ICalcTreeNode* CUtilityCalc::ParseExpression(const char16_t* text, CErrorCollector* errors) {
  CString source(text);
  source.TrimRight();
  CString work(source);
  auto root = std::make_unique<vkt::CCalcTreeNode>(nullptr, vkt::kKindExpression);
  if (root->Parse(work, errors)) return root.release();
  root.reset();

  // The collector keeps the first failure, also when the repaired text
  // parses: the caller goes by the result.
  if (source.IsEmpty()) return nullptr;
  CString repaired;
  if (!vkt::RepairClosingBackslashes(source, repaired)) return nullptr;
  root = std::make_unique<vkt::CCalcTreeNode>(nullptr, vkt::kKindExpression);
  if (root->Parse(repaired, errors)) return root.release();
  return nullptr;
}

ICalcTreeNode* CUtilityCalc::ParseExpression_Formula(const char16_t* text, CErrorCollector* errors) {
  if (text == nullptr || text[0] == 0) return nullptr;
  const char16_t* rest = text;
  while (*rest == u' ') ++rest;
  if (*rest == u'=') {
    ++rest;
    while (*rest == u' ') ++rest;
  }
  if (*rest == 0) return nullptr;
  return ParseExpression(rest, errors);
}
