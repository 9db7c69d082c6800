#pragma once
// The payloads of selections and fields in a settings file, built byte by byte. All values differ from those of a new
// object, and from each other.

#include "support/bytes.h"

#include <vector>

namespace NBrenmark {

using SampleVectors = std::vector<std::vector<double>>;

/// A record of how a field is drawn, in the layout of a version.
CBytes fieldDisplayBytes(quint32 version);
/// Components, then as many numbers.
CBytes vectorBytes(const std::vector<double>& components);
/// A field: points and values are counted, each with its own width.
CBytes fieldBytes(quint32 version, const QString& name, qint32 id, qint32 plane, const SampleVectors& points,
                  const SampleVectors& values);

/// What every query has, after the word of its class.
CBytes queryBytes(const QString& primaryAttribute = "Velocity");
/// Sections of queries, each query with its class in front of it.
CBytes queryMapBytes(const std::vector<std::pair<QString, std::vector<CBytes>>>& sections);

/// Display options as some other program may leave them.
CBytes displayBytes();
/// One type filter after its count and class.
CBytes filterListBytes();
/// Class and name, as the map stores them in front of a selection, and name and flag, with which that begins.
CBytes selectionHead(const QString& typeId, const QString& name);
/// What comes after that in every selection: display options, filters, queries.
CBytes selectionBase(const CBytes& queries);
/// Colour and opacity, as far as a version has them.
CBytes colourBytes(quint32 version);
/// What a region adds, without geometry of its own: three bytes of parameters, which nothing counts.
CBytes regionBytes();

} // namespace NBrenmark
