// Tables in plain text.
#pragma once

#include <QStringList>

#include <vector>

namespace text {

/// The rows, each of as many cells as `right` has, with two blanks before each column; `right` says which
/// columns are right-aligned. Lines have no blanks at their end.
QStringList Aligned(const std::vector<QStringList>& rows, const std::vector<bool>& right);

} // namespace text
