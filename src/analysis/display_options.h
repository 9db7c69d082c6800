#pragma once
// How the particles and the contacts of a selection are drawn. A selection carries the record; nothing here draws.

#include "analysis/colour_records.h"
#include "core/read_write.h"

#include <map>
#include <memory>
#include <string>

namespace NBrenmark {

class CDisplayOptions : public IReadWrite
{
public:
    /// The word in front of a record, by which it is told from those of other programs: "BDOp".
    static constexpr quint32 recordWord = 0x42444F70;

    bool write(QDataStream& stream, IProgressController* progress) override;
    /// \throws std::exception  what follows is no such record
    bool read(QDataStream& stream, IProgressController* progress) override;
    void form(IEntryForm& f);

    QColor colour = Qt::black;
    bool active = true;
    double transparency = 0.0;
    qint32 polygonMode = 0;
    QString attributeName;
    QString componentName;
    bool colourByAttribute = false;
    bool smooth = false;
    bool highlightAll = false;
    bool useForColouring = false;
    bool hideOutOfBounds = false;
    bool useForRepresentation = false;
    QString contactAttribute;
    QString bondAttribute;
    double bondDistanceThreshold = 0.0; ///< m
    QString takeColouringFrom;
    QString type;
    bool useLogarithmicScaling = false;
    QString texturePath;
    CColour scale;
};

/// The display options of a deck by name; they live as long as this does, or until they are removed.
class CDisplayOptionManager
{
public:
    /// The options of that name, made when they are missing.
    CDisplayOptions& options(const std::string& name);
    /// Options that have the new name are replaced; where there are none of the old one nothing happens.
    void rename(const std::string& oldName, const std::string& newName);
    void remove(const std::string& name) { byName.erase(name); }
    void clear() { byName.clear(); }
    size_t count() const { return byName.size(); }

private:
    std::map<std::string, std::unique_ptr<CDisplayOptions>> byName;
};

} // namespace NBrenmark
