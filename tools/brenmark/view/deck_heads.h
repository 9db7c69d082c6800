#pragma once
// Reads of a deck of the HDF5 family what a view names: which arrays its timesteps have, and their shapes. No row of
// particles or contacts is read; the corners of walls are, where they have moved.

#include "brenmark/view/chosen_values.h"
#include "brenmark/view/grids.h"
#include "brenmark/view/left_out.h"

#include "core/deck/file_format_manager.h"
#include "maths/transform.h"
#include "properties/custom_property_manager.h"

#include <QString>

#include <H5Cpp.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

/// Vertices that no file of the deck holds as they are at a timestep: of walls that moved, and of imports that were placed.
struct SMovedVertices
{
    std::string dataset; ///< where they are to be written
    std::vector<C3DPoint> points;
};

class CDeckHeads
{
public:
    /// \param deck        its first file
    /// \param index       of its timesteps, which was made by reading all files
    /// \param properties  the deck's custom properties
    /// \param extraFile   name of the file beside the view for vertices that have moved
    /// \param chosen      values of other names aren't asked for
    CDeckHeads(const QString& deck, const TimestepIndex& index, const SPropertyManagers& properties,
               std::string extraFile, CChosenValues& chosen, CLeftOut& leftOut);

    /// \param moved  gets what the extra file must hold for this timestep
    /// \throws std::exception, H5::Exception  a file is missing or damaged
    SViewStep step(quint32 number, std::vector<SMovedVertices>& moved);

private:
    /// A wall as its model has it.
    struct SWall
    {
        std::string name;
        SNamedArray points; ///< rows 0: the file has them nowhere
        SNamedArray triangles;
        SNamedArray ids;
        std::vector<C3DPoint> base; ///< vertices before it moved, m
    };
    struct SModel
    {
        std::map<quint32, SWall> walls;
        std::vector<SBoxOutline> domain;
    };
    /// A group and where it is.
    struct SPlace
    {
        const H5::Group& group;
        std::string file;
        std::string path;
        std::string owner; ///< for messages: "particles Ball"
    };
    struct SWanted
    {
        const char* dataset;
        const char* shown;
        EArrayKind kind;
        quint64 columns;                    ///< 0: a list
        std::vector<std::string> made = {}; ///< names of the values that are made of it
    };

    H5::H5File open(quint32 number) const;
    const SModel& model(quint32 number);
    bool readWall(const H5::Group& group, const SPlace& where, SWall& wall);
    void readDomain(const H5::Group& root, SModel& model);
    void addParticles(SViewStep& step, const SPlace& timestep);
    void addContacts(SViewStep& step, const SPlace& timestep);
    void addWalls(SViewStep& step, const SPlace& timestep, quint32 modelNumber, std::vector<SMovedVertices>& moved);
    /// An array if the file holds it in the shape that it is to have.
    bool found(const SPlace& place, const SWanted& wanted, quint64 rows, SNamedArray& array);
    void addValues(SGrid& grid, const SPlace& place, const std::vector<SWanted>& wanted, quint64 rows);
    void addProperties(SGrid& grid, const SPlace& place, const CCustomPropertyManager& manager, quint64 rows);
    void lose(const std::string& what) { leftOut.add(what, current); }

    QString deck;
    const TimestepIndex& index;
    std::string folder; ///< of the numbered files, relative to the view
    std::string extraFile;
    SPropertyManagers properties;
    CChosenValues& chosen;
    CLeftOut& leftOut;
    std::map<quint32, SModel> models; ///< the one in use
    quint32 current = 0;              ///< timestep, for messages
};

} // namespace NBrenmark
