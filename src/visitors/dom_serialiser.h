#pragma once
// The contract between a part of a deck and the documents that it is written to and read from. A document is neither
// built nor held as a whole: elements go out as they are made, and come in one opening tag at a time.

class QString;

namespace NBrenmark {

class CXmlAttributes;
class CXmlOutput;
struct CXmlIoOptions;

class IDomSerialiser
{
public:
    virtual ~IDomSerialiser() = default;

    /// Takes the fields of the object from the attributes of its element. One that is missing reads as 0 or as an
    /// empty text, unless its class says otherwise.
    virtual void fromDomElement(const CXmlAttributes& attributes, const CXmlIoOptions& options) = 0;
    /// Writes the object as an element with all its children.
    virtual void toDomElement(CXmlOutput& out, CXmlIoOptions& options) = 0;
    /// One opening tag: a container takes those that it knows, and passes the others on to its members.
    /// \return whether anyone knew it
    virtual bool startDomElement(const QString& tagName, const CXmlAttributes& attributes,
                                 const CXmlIoOptions& options) = 0;
};

} // namespace NBrenmark
