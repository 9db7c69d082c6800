#pragma once
// The XML of an XDMF view. XDMF 2, which ParaView opens with each of its readers.

#include "brenmark/view/grids.h"

namespace NBrenmark {

/// By this a file is known as one that may be replaced.
extern const char* const xdmfMark;

std::string xdmfHead();
std::string xdmfStep(const SViewStep& step);
std::string xdmfEnd();

/// Whether a path can be named in an XDMF: a colon parts file and dataset, a bar several of them, and blanks at the ends
/// are dropped.
bool isXdmfPath(const std::string& path);

} // namespace NBrenmark
