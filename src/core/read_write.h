#pragma once
// Objects that store themselves in a stream, outside of the two file families.

namespace NBrenmark {

class CVersionedStream;
class IProgressController;

class IReadWrite
{
public:
    virtual ~IReadWrite() = default;
    virtual bool write(CVersionedStream& stream, IProgressController* progress) = 0;
    virtual bool read(CVersionedStream& stream, IProgressController* progress) = 0;
};

/// An entry of the settings file. read and write end with setModified(false) when they complete.
class ISimulationSettingsEntry : public IReadWrite
{
public:
    virtual bool isModified() const = 0;
    virtual void setModified(bool modified) = 0;
    /// Empties the entry, notifying its listeners if notify is true.
    virtual void clear(bool notify) = 0;
    /// Whether its block has to be written; one that says nothing is left out only if its entry wants that.
    virtual bool hasContent() const { return true; }
};

} // namespace NBrenmark
