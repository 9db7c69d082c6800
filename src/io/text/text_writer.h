#pragma once
// The third writer of the visitor contract: turns a model into lines of text. It stores nothing, so
// that no version or date goes into what it visits, but it has every row: like the other writers it takes
// released rows out of the families of contacts and bonds.

#include "io/text/text_output.h"
#include "visitors/file_visitor_writer.h"

#include <string>

namespace NBrenmark {

/// Geometry, its motions and its factories hold their definition and their state on the same objects. A model shows
/// both, its own state as it was stored with it; a timestep shows what timesteps store.
enum class ETextPart
{
    eAll,
    eDefinition,
    eState
};

class CTextWriter : public IFileVisitorWriter
{
public:
    /// \param sink        not owned
    /// \param root        what all paths begin with, for example "creator" or "timestep/3"
    /// \param fullArrays  arrays with all their values
    /// \param part        of geometry; timesteps choose theirs by themselves
    CTextWriter(ITextSink& sink, const std::string& root, bool fullArrays, ETextPart part = ETextPart::eAll)
        : out(sink, root, fullArrays), part(part)
    {}

#define STORED(operation, type, ...) void write##operation(const type& object) override;
#define STAMPED(operation, type, ...) void write##operation(type& object) override;
#include "visitors/stored_classes.def"

private:
    bool covers(ETextPart which) const { return part == ETextPart::eAll || part == which; }
    /// Runs body, which writes one part alone.
    template <class TBody>
    void covering(ETextPart which, TBody&& body)
    {
        const ETextPart before = part;
        part = which;
        body();
        part = before;
    }

    CTextOutput out;
    ETextPart part;
};

} // namespace NBrenmark
