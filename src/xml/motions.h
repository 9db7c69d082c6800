#pragma once
// The motions of a geometry group, for the part that reads the group.

#include "xml/serialisers.h"

namespace NBrenmark {

/// Whether a group's force is controlled: it moves by a translation of its own then.
bool hasServoControl(const CGeometryGroup& group);
/// Gives a group that translation.
void addServoMotion(CGeometryGroup& group);
/// Takes an element that is a motion.
/// \param hasMotionOfGain  whether the group has the translation that its gain gave it: one of the document replaces it
/// \return false for any other element
bool readMotion(CGeometryGroup& group, const CXmlAttributes& attributes, const CXmlIoOptions& options,
                bool& hasMotionOfGain);

} // namespace NBrenmark
