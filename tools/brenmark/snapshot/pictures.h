#pragma once
// A scene as SVG or as an image.

#include "brenmark/snapshot/scene.h"

#include <QString>

namespace NBrenmark {

std::string sceneSvg(const SScene& scene);
/// Needs no display. \throws CFailure  the file can't be written
void writePng(const SScene& scene, const QString& path);

} // namespace NBrenmark
