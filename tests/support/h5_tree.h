#pragma once
// What an HDF5 file holds, as lines of text: every group, attribute and dataset with its exact type, space and layout.
// Told with the plain C interface of HDF5, and nothing of the library's own.
//
//   /CreatorData/0/                                          a group
//   /CreatorData/0/@damping f64 = 0.5                        a scalar attribute
//   /CreatorData/0/@title string[6] = "Kiste"                of six bytes, the terminator among them
//   /CreatorData/0/@gravity f64[3] = 0 0 -9.8                of an array type
//   /a/position f64 {300,3} chunks {83,3} deflate 6          a dataset; up to six values follow
//   /a/Materials {name@0 string[256], type@288 u32} 296 {2}  of a compound type of 296 bytes

#include <QString>
#include <hdf5.h>
#include <string>

namespace NBrenmark {

/// \param from  the group to start at
/// \throws std::runtime_error  if the file can't be opened
std::string treeOf(const QString& path, const std::string& from = "/");

enum ETreeDetail
{
    eFewValues, ///< up to six of a dataset, none of a table
    eAllValues  ///< up to 64, rows of tables as well
};

/// Of a file that is open.
std::string treeOf(hid_t file, const std::string& from, ETreeDetail detail);

/// A type alone: "{name@0 string[256], type@288 u32} 296".
std::string typeText(hid_t type);

} // namespace NBrenmark
