// VTK's XML files, one for each kind of piece and timestep, and a .pvd that says which are of one time.

#include "brenmark/export/vtk_file.h"
#include "brenmark/export/writers.h"
#include "brenmark/plot_axis.h"
#include "brenmark/target_file.h"
#include "brenmark/values/value_table.h"

#include <deque>
#include <future>

namespace NBrenmark {

namespace {

class CVtkWriter : public IExportWriter
{
public:
    CVtkWriter(const QString& folder, bool unstructured)
        : folder(folder), unstructured(unstructured), series(folder + QLatin1String("deck.pvd"))
    {
        series.write("<?xml version=\"1.0\"?>\n<VTKFile type=\"Collection\" version=\"0.1\">\n<Collection>\n");
    }

    const char* mainFile() const override { return "deck.pvd"; }
    void write(SExportStep& step) override;
    void finish() override
    {
        finishStep();
        series.write("</Collection>\n</VTKFile>\n");
        series.commit();
    }

private:
    /// A timestep whose files are deflated and written while the next one is read.
    struct SUnderWay
    {
        std::vector<SPiece> pieces;
        std::deque<CVtkFile> files;
        std::future<void> written; // the last member: it uses the others, and goes first
    };
    void finishStep();

    QString folder;
    bool unstructured;
    CTargetFile series;
    CDeflatedSequences sequences;
    std::unique_ptr<SUnderWay> underWay;
};

} // namespace

static void addValues(CVtkFile& file, const SPieceArray& array)
{
    if (array.isInteger)
        file.array(array.name, array.columns, std::vector<qint64>(array.values.begin(), array.values.end()));
    else
        file.array(withUnit(array.name, array.unit), array.columns, array.values);
}

/// The names that the array of owners has numbers of.
static std::string nameTable(const SPiece& piece)
{
    std::string text = "<FieldData>\n";
    for (std::size_t i = 0; i < piece.ownerNames.size(); ++i) {
        const std::string& name = piece.ownerNames[i];
        text +=
            "<Array type=\"String\" Name=\"name " + std::to_string(i) + "\" NumberOfTuples=\"1\" format=\"ascii\">\n";
        for (const char c : name)
            text += std::to_string(static_cast<uchar>(c)) + ' ';
        text += "0\n</Array>\n";
    }
    return text + "</FieldData>\n";
}

/// The corners of each cell, and where the next one begins.
static void addCells(CVtkFile& file, const SPiece& piece, bool unstructured)
{
    const bool hasTriangles = !piece.triangles.empty();
    const std::size_t count = hasTriangles ? piece.rows() : piece.pointCount();
    const qint64 corners = hasTriangles ? 3 : 1;
    const std::string kind = unstructured ? "Cells" : hasTriangles ? "Polys" : "Verts";
    file << '<' + kind + ">\n";
    if (hasTriangles)
        file.array("connectivity", 1, std::vector<qint64>(piece.triangles.begin(), piece.triangles.end()));
    else
        file.sequence("connectivity", 0, 1, count);
    file.sequence("offsets", corners, corners, count);
    constexpr uchar vertexCell = 1, triangleCell = 5; // VTK's numbers
    if (unstructured)
        file.array("types", 1, std::vector<uchar>(count, hasTriangles ? triangleCell : vertexCell));
    file << "</" + kind + ">\n";
}

static std::string counts(const SPiece& piece, bool unstructured)
{
    const bool hasTriangles = !piece.triangles.empty();
    const std::string points = "NumberOfPoints=\"" + std::to_string(piece.pointCount()) + '"';
    const std::string cells = std::to_string(hasTriangles ? piece.rows() : piece.pointCount());
    if (unstructured)
        return points + " NumberOfCells=\"" + cells + '"';
    return points + " NumberOfLines=\"0\" NumberOfStrips=\"0\" NumberOfVerts=\"" + (hasTriangles ? "0" : cells) +
           "\" NumberOfPolys=\"" + (hasTriangles ? cells : "0") + '"';
}

static void describe(CVtkFile& file, const SPiece& piece, bool unstructured)
{
    file << nameTable(piece) << "<Piece " << counts(piece, unstructured) << ">\n<Points>\n";
    file.array("Points", 3, piece.points);
    file << "</Points>\n";
    addCells(file, piece, unstructured);
    const std::string values = piece.triangles.empty() ? "PointData" : "CellData";
    file << '<' + values + ">\n";
    file.array(piece.kind == "geometry" ? "Group" : "Type", 1, piece.owners);
    for (const SPieceArray& array : piece.arrays)
        addValues(file, array);
    file << "</" + values + ">\n</Piece>\n";
}

void CVtkWriter::finishStep()
{
    if (underWay)
        underWay->written.get();
    underWay.reset();
}

void CVtkWriter::write(SExportStep& step)
{
    finishStep();
    underWay = std::make_unique<SUnderWay>();
    underWay->pieces = std::move(step.pieces);
    int part = 0;
    for (const SPiece& piece : underWay->pieces) {
        const std::string name = piece.kind + '_' + std::to_string(step.number) + (unstructured ? ".vtu" : ".vtp");
        CVtkFile& file = underWay->files.emplace_back(folder + QString::fromStdString(name),
                                                      unstructured ? "UnstructuredGrid" : "PolyData", sequences);
        describe(file, piece, unstructured);
        series.write("<DataSet timestep=\"" + exactNumber(step.time) + "\" part=\"" + std::to_string(part++) +
                     "\" name=\"" + piece.kind + "\" file=\"" + name + "\"/>\n");
    }
    // On a thread of its own, if there is one: one of the pool would compute nothing while it waits for the disk.
    underWay->written = std::async([&files = underWay->files] {
        for (CVtkFile& file : files)
            file.write();
    });
}

std::unique_ptr<IExportWriter> vtkWriter(const QString& folder, bool unstructured)
{
    return std::make_unique<CVtkWriter>(folder, unstructured);
}

} // namespace NBrenmark
