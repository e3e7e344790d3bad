#pragma once

#include <QByteArray>

namespace quillbay::testing {

/// What must hold of any input, whatever it is, one function for each text that comes from outside: it is
/// refused, or taken so that writing what was read and reading it again gives the same. Answers what does not
/// hold, or null. The fuzzers and the replay of what they have found share these.
const char *checkFolders(const QByteArray &input);
const char *checkWorkspaces(const QByteArray &input);
const char *checkGrid(const QByteArray &input);
const char *checkDocuments(const QByteArray &input);

} // namespace quillbay::testing
