// Exports as text: tables with commas, and particles as extended XYZ.

#include "brenmark/export/writers.h"
#include "brenmark/plot_axis.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_table.h"

#include <algorithm>

namespace NBrenmark {

namespace {

class CCsvWriter : public IExportWriter
{
public:
    explicit CCsvWriter(const QString& folder) : folder(folder), times(folder + QLatin1String("timesteps.csv")) {}

    const char* mainFile() const override { return "timesteps.csv"; }
    void write(SExportStep& step) override;
    void finish() override { times.commit(); }

private:
    QString folder;
    CTargetFile times;
    bool hasHead = false;
};

class CXyzWriter : public IExportWriter
{
public:
    explicit CXyzWriter(const QString& folder) : file(folder + QLatin1String("particles.xyz")) {}

    const char* mainFile() const override { return "particles.xyz"; }
    void write(SExportStep& step) override;
    void finish() override { file.commit(); }

private:
    CTargetFile file;
};

} // namespace

/// Centre of a row: a point, or the middle of a triangle.
static std::array<double, 3> centreOf(const SPiece& piece, std::size_t row)
{
    std::array<double, 3> centre{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (piece.triangles.empty())
            centre[axis] = piece.points[3 * row + axis];
        else
            for (std::size_t corner = 0; corner < 3; ++corner)
                centre[axis] += piece.points[3 * piece.triangles[3 * row + corner] + axis] / 3.0;
    }
    return centre;
}

static std::string numberText(const SPieceArray& array, std::size_t at)
{
    return array.isInteger ? std::to_string(static_cast<qint64>(array.values[at])) : exactNumber(array.values[at]);
}

void CCsvWriter::write(SExportStep& step)
{
    if (!hasHead)
        times.write("\"timestep\"," + quotedCell(withUnit("time", step.timeUnit)) + '\n');
    hasHead = true;
    times.write(std::to_string(step.number) + ',' + exactNumber(step.time) + '\n');
    for (const SPiece& piece : step.pieces) {
        CTargetFile file(folder + QString::fromStdString(piece.kind + '_' + std::to_string(step.number) + ".csv"));
        std::string text = "\"name\"";
        for (const char* const axis : {"x", "y", "z"})
            text += ',' + quotedCell(withUnit(axis, piece.lengthUnit));
        for (const SPieceArray& array : piece.arrays)
            for (const std::string& head : array.heads)
                text += ',' + quotedCell(head);
        text += '\n';
        for (std::size_t row = 0; row < piece.rows(); ++row) {
            text += quotedCell(piece.ownerNames[static_cast<std::size_t>(piece.owners[row])]);
            for (const double value : centreOf(piece, row))
                text += ',' + exactNumber(value);
            for (const SPieceArray& array : piece.arrays)
                for (std::size_t column = 0; column < array.columns; ++column)
                    text += ',' + numberText(array, row * array.columns + column);
            text += '\n';
            if (text.size() > (1u << 20)) {
                file.write(text);
                text.clear();
            }
        }
        file.write(text);
        file.commit();
    }
}

/// A name as a word: what parts words and values becomes an underscore.
static std::string wordOf(const std::string& name)
{
    std::string word = oneLine(name);
    for (char& c : word)
        if (c == ' ' || c == ':' || c == '"' || c == '=' || c == '\'')
            c = '_';
    return word.empty() ? "_" : word;
}

void CXyzWriter::write(SExportStep& step)
{
    const SPiece none;
    const auto found =
        std::find_if(step.pieces.begin(), step.pieces.end(), [](const SPiece& one) { return one.kind == "particles"; });
    const SPiece& piece = found == step.pieces.end() ? none : *found;
    std::string text = std::to_string(piece.rows()) + "\nProperties=species:S:1:pos:R:3";
    for (const SPieceArray& array : piece.arrays)
        text += ':' + wordOf(array.name) + (array.isInteger ? ":I:" : ":R:") + std::to_string(array.columns);
    text += " Time=" + exactNumber(step.time) + " Timestep=" + std::to_string(step.number) + '\n';
    for (std::size_t row = 0; row < piece.rows(); ++row) {
        text += wordOf(piece.ownerNames[static_cast<std::size_t>(piece.owners[row])]);
        for (std::size_t axis = 0; axis < 3; ++axis)
            text += ' ' + exactNumber(piece.points[3 * row + axis]);
        for (const SPieceArray& array : piece.arrays)
            for (std::size_t column = 0; column < array.columns; ++column)
                text += ' ' + numberText(array, row * array.columns + column);
        text += '\n';
        if (text.size() > (1u << 20)) {
            file.write(text);
            text.clear();
        }
    }
    file.write(text);
}

std::unique_ptr<IExportWriter> csvWriter(const QString& folder) { return std::make_unique<CCsvWriter>(folder); }
std::unique_ptr<IExportWriter> xyzWriter(const QString& folder) { return std::make_unique<CXyzWriter>(folder); }

} // namespace NBrenmark
