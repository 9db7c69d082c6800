// VTK's XML files: a head that says what is where, then compressed blocks of bytes.
// The format: "VTK XML Formats" in the VTK documentation, header_type UInt64, encoding raw.

#include "brenmark/export/writers.h"
#include "brenmark/plot_axis.h"
#include "brenmark/target_file.h"
#include "brenmark/values/value_table.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>

namespace NBrenmark {

/// Bytes that are compressed at a time.
static constexpr std::size_t vtkBlock = 1u << 20;
static constexpr int vtkLevel = 6;

namespace {

/// Arrays one after the other, as the head names them by where they begin.
class CAppended
{
public:
    /// \return the place of the array
    template <class T>
    std::size_t add(const std::vector<T>& values)
    {
        const std::size_t place = bytes.size();
        const auto* const data = reinterpret_cast<const uchar*>(values.data());
        const std::size_t size = values.size() * sizeof(T), whole = size / vtkBlock, rest = size % vtkBlock;
        std::vector<QByteArray> blocks;
        for (std::size_t at = 0; at < size; at += vtkBlock)
            // Qt puts the length, of four bytes, before what zlib makes.
            blocks.push_back(qCompress(data + at, static_cast<int>(std::min(vtkBlock, size - at)), vtkLevel).mid(4));
        addNumber(whole + (rest > 0 ? 1 : 0));
        addNumber(vtkBlock);
        addNumber(rest);
        for (const QByteArray& block : blocks)
            addNumber(static_cast<quint64>(block.size()));
        for (const QByteArray& block : blocks)
            bytes.append(block.constData(), static_cast<std::size_t>(block.size()));
        return place;
    }

    std::string bytes;

private:
    void addNumber(quint64 number) { bytes.append(reinterpret_cast<const char*>(&number), sizeof number); }
};

class CVtkWriter : public IExportWriter
{
public:
    CVtkWriter(const QString& folder, bool unstructured)
        : folder(folder), unstructured(unstructured), series(folder + QLatin1String("deck.pvd"))
    {
        series.write("<?xml version=\"1.0\"?>\n<VTKFile type=\"Collection\" version=\"0.1\">\n<Collection>\n");
    }

    const char* mainFile() const override { return "deck.pvd"; }
    void write(const SExportStep& step) override;
    void finish() override
    {
        series.write("</Collection>\n</VTKFile>\n");
        series.commit();
    }

private:
    std::string cells(const SPiece& piece, CAppended& appended) const;

    QString folder;
    bool unstructured;
    CTargetFile series;
};

} // namespace

static std::string dataArray(const char* type, const std::string& name, std::size_t columns, std::size_t place)
{
    return "<DataArray type=\"" + std::string(type) + "\" Name=\"" + svgText(name) + "\" NumberOfComponents=\"" +
           std::to_string(columns) + "\" format=\"appended\" offset=\"" + std::to_string(place) + "\"/>\n";
}

static std::string valueArray(const SPieceArray& array, CAppended& appended)
{
    if (!array.isInteger)
        return dataArray("Float64", withUnit(array.name, array.unit), array.columns, appended.add(array.values));
    return dataArray("Int64", array.name, array.columns,
                     appended.add(std::vector<qint64>(array.values.begin(), array.values.end())));
}

/// Which of its names a row has, and the names themselves.
static std::string ownerArrays(const SPiece& piece, CAppended& appended)
{
    return dataArray("Int32", piece.kind == "geometry" ? "Group" : "Type", 1, appended.add(piece.owners));
}

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

std::string CVtkWriter::cells(const SPiece& piece, CAppended& appended) const
{
    const bool hasTriangles = !piece.triangles.empty();
    const std::size_t count = hasTriangles ? piece.rows() : piece.pointCount(), corners = hasTriangles ? 3 : 1;
    std::vector<qint64> connectivity(count * corners), ends(count);
    for (std::size_t i = 0; i < connectivity.size(); ++i)
        connectivity[i] = hasTriangles ? qint64(piece.triangles[i]) : qint64(i);
    for (std::size_t i = 0; i < count; ++i)
        ends[i] = qint64(i + 1) * qint64(corners);
    const std::string text = dataArray("Int64", "connectivity", 1, appended.add(connectivity)) +
                             dataArray("Int64", "offsets", 1, appended.add(ends));
    if (!unstructured)
        return hasTriangles ? "<Polys>\n" + text + "</Polys>\n" : "<Verts>\n" + text + "</Verts>\n";
    constexpr uchar vertexCell = 1, triangleCell = 5; // VTK's numbers
    return "<Cells>\n" + text +
           dataArray("UInt8", "types", 1,
                     appended.add(std::vector<uchar>(count, hasTriangles ? triangleCell : vertexCell))) +
           "</Cells>\n";
}

void CVtkWriter::write(const SExportStep& step)
{
    int part = 0;
    for (const SPiece& piece : step.pieces) {
        CAppended appended;
        const bool hasTriangles = !piece.triangles.empty();
        const std::string cellCount = std::to_string(hasTriangles ? piece.rows() : piece.pointCount());
        const std::string kind = unstructured ? "UnstructuredGrid" : "PolyData";
        const char* const values = hasTriangles ? "CellData" : "PointData";
        std::string text = "<?xml version=\"1.0\"?>\n<VTKFile type=\"";
        text.append(kind).append("\" version=\"1.0\" byte_order=\"");
        text += std::string(Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "LittleEndian" : "BigEndian") +
                "\" header_type=\"UInt64\" compressor=\"vtkZLibDataCompressor\">\n<" + kind + ">\n" + nameTable(piece) +
                "<Piece NumberOfPoints=\"" + std::to_string(piece.pointCount()) + "\" " +
                (unstructured ? "NumberOfCells=\"" + cellCount + '"'
                              : std::string("NumberOfLines=\"0\" NumberOfStrips=\"0\" NumberOfVerts=\"") +
                                    (hasTriangles ? "0" : cellCount) + "\" NumberOfPolys=\"" +
                                    (hasTriangles ? cellCount : "0") + '"') +
                ">\n<Points>\n" + dataArray("Float64", "Points", 3, appended.add(piece.points)) + "</Points>\n" +
                cells(piece, appended) + '<' + values + ">\n" + ownerArrays(piece, appended);
        for (const SPieceArray& array : piece.arrays)
            text += valueArray(array, appended);
        text += std::string("</") + values + ">\n</Piece>\n</" + kind + ">\n<AppendedData encoding=\"raw\">\n_";
        const std::string name = piece.kind + '_' + std::to_string(step.number) + (unstructured ? ".vtu" : ".vtp");
        CTargetFile file(folder + QString::fromStdString(name));
        file.write(text);
        file.write(appended.bytes);
        file.write("\n</AppendedData>\n</VTKFile>\n");
        file.commit();
        series.write("<DataSet timestep=\"" + exactNumber(step.time) + "\" part=\"" + std::to_string(part++) +
                     "\" name=\"" + piece.kind + "\" file=\"" + name + "\"/>\n");
    }
}

std::unique_ptr<IExportWriter> vtkWriter(const QString& folder, bool unstructured)
{
    return std::make_unique<CVtkWriter>(folder, unstructured);
}

} // namespace NBrenmark
