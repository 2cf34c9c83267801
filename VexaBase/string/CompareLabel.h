// The order of labels with embedded numbers: "Ward 9" before "Ward 10".
//
// The labels are not walked side by side. Each falls into its text, all characters that are no ASCII digit,
// and its number, which all its digits form together wherever they stand. The texts decide; the numbers
// decide between equal texts. So a1b2 (ab and 12) orders equal to ab12, leading zeros do not count, and a
// minus sign is text.
//
// Two rules are deliberate, and lists that are kept in this order count on them:
//   (1) a character of negative value takes the one behind it along into the text, unexamined, even a digit:
//       a character of two units is kept whole
//   (2) of a number, clamped to the largest long, the low 32 bits are compared as a signed value: twenty
//       nines order before 0, and 2^32 + 1 equals 1
#pragma once

#include "VexaBase/KyConfig.h"

/// Three-way comparison of two labels: -1 when a orders before b, 0 when they order equal, 1 when a orders
/// behind b. The texts compare as wcscmp compares them, by character code, upper case first. A total
/// preorder. O(length of the labels), allocates nothing. Requires both labels not null.
KY_API int CompareLabel(const wchar_t* a, const wchar_t* b);
