#pragma once
// The names of all stored classes, for headers that only pass them on.

namespace NBrenmark {

#define STORED(operation, type, ...) class type; // NOLINT(bugprone-macro-parentheses)
#define LEGACY(operation, type, column)                                                                                \
    namespace NLegacySupport {                                                                                         \
    class type;                                                                                                        \
    }
#include "visitors/stored_classes.def"

} // namespace NBrenmark
