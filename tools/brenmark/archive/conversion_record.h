#pragma once
// What the process that converts one deck of an archive leaves for the run that started it: a file that is there whole
// before the new deck gets its name, so that what is known of it outlives whichever of both is killed.

#include "brenmark/archive/deck_outcome.h"
#include "brenmark/archive/file_digests.h"
#include "brenmark/conversion_report.h"
#include "brenmark/failure.h"

#include <QString>

#include <optional>

namespace NBrenmark {

/// What a conversion comes to that didn't fail, without what is on the disk.
SDeckOutcome outcomeOf(const SConversionResult& result);
/// Puts what a failure says into an outcome.
void takeFailure(SDeckOutcome& outcome, const CFailure& failure);

/// \throws CFailure  it can't be written
void writeRecord(const std::string& path, const SDeckOutcome& outcome);
/// None if there is none, or one that can't be read.
std::optional<SDeckOutcome> readRecord(const std::string& path);

} // namespace NBrenmark
