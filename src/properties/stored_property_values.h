#pragma once
// How the values of a custom property that a file of either family holds become those of a list.

#include <QtGlobal>

#include <vector>

namespace NBrenmark {

class CCustomPropertyValueList;
struct SLogTitle;

/// Takes what a file held for as many items as the list has.
/// Where the definition wants another number of values an item than the file has, an item takes the front of its own: a
/// value never moves to another item. That is reported, as is another number of items.
/// \param stored  item by item
/// \param width   values of an item
void takeStoredValues(CCustomPropertyValueList& list, std::vector<double>& stored, quint64 width,
                      const SLogTitle& title);

} // namespace NBrenmark
