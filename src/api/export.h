#pragma once
// What the shared library shows. Everything else in it is hidden, by the compiler and once more by the linker's
// version script (cmake/exports.map), which also hides the weak symbols of the standard library's templates.
// Installed beside data_converter.h, which therefore includes it as its neighbour.

#define BRENMARK_EXPORT __attribute__((visibility("default")))
