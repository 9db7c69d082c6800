#pragma once
// What stands of a selection in the file of another program, whose layout isn't known here: its bytes, and the
// version that they were written by. They are carried along, so that who knows the layout still can read them.
//
// Layouts change from version to version. Bytes of the version that is written stand in the file as they were.
// Older ones would be taken there for what they are not: they stand in a record that tells of their version.

#include <QByteArray>
#include <QtGlobal>

class QDataStream;

namespace NBrenmark {

struct SCarriedStream
{
    /// The word in front of a record: "BSel".
    static constexpr quint32 recordWord = 0x4253656C;

    /// Takes a record, or the bytes up to the next selection or the end of the block.
    /// \throws std::exception  a record that ends early, or bytes whose end nothing tells
    void read(QDataStream& stream);
    void write(QDataStream& stream) const;

    quint32 version = 0;
    quint32 edition = 0;
    QByteArray bytes;
    bool isUnwrapped = false; ///< the bytes were read as another program's, not from a record
};

} // namespace NBrenmark
