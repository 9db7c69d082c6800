#pragma once
// The state of a legacy traversal.

namespace NBrenmark {

class CDemDataStream;

class CDemVisitor
{
public:
    explicit CDemVisitor(CDemDataStream& stream) : stream(&stream) {}
    virtual ~CDemVisitor() = default;

protected:
    CDemDataStream* stream; // not owned
};

} // namespace NBrenmark
