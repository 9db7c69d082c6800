// EnSight Gold, binary: a geometry file for each timestep with the pieces as parts, a file for each array and timestep, and
// a case file that names them. Numbers are of 32 bits, which is all that the format has.

#include "brenmark/export/writers.h"
#include "brenmark/target_file.h"
#include "brenmark/values/value_table.h"

#include <algorithm>
#include <map>
#include <set>

namespace NBrenmark {

namespace {

struct SVariable
{
    std::string declaration;         ///< line of the case file
    std::set<std::size_t> timesteps; ///< that have a file of it
};

class CEnsightWriter : public IExportWriter
{
public:
    explicit CEnsightWriter(const QString& folder) : folder(folder), caseFile(folder + QLatin1String("deck.case")) {}

    const char* mainFile() const override { return "deck.case"; }
    void write(SExportStep& step) override;
    void finish() override;

private:
    void writeGeometry(const SExportStep& step, const std::string& number);
    void writeValues(const SExportStep& step, const std::string& number);
    void writeMissing(const std::string& stem, const SVariable& variable) const;
    std::string freeStem(const SPiece& piece, const std::string& name);

    QString folder;
    CTargetFile caseFile;
    std::vector<double> times;
    std::map<std::string, std::string> stems;   ///< by kind and name
    std::map<std::string, SVariable> variables; ///< by the stem of their files
};

} // namespace

static const std::vector<std::string>& partNames()
{
    static const std::vector<std::string> names{"particles", "contacts", "geometry"};
    return names;
}

static qint32 partNumber(const std::string& kind)
{
    return static_cast<qint32>(std::find(partNames().begin(), partNames().end(), kind) - partNames().begin()) + 1;
}

/// A line of the format: 80 bytes.
static std::string line(const std::string& text)
{
    std::string padded = text.substr(0, 79);
    padded.resize(80, '\0');
    return padded;
}

static std::string integer(qint32 value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); }

/// A column of rows.
static std::string floats(const std::vector<double>& values, std::size_t columns, std::size_t column)
{
    std::string bytes;
    for (std::size_t at = column; at < values.size(); at += columns) {
        const auto value = static_cast<float>(values[at]);
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes;
}

void CEnsightWriter::writeGeometry(const SExportStep& step, const std::string& number)
{
    CTargetFile file(folder + QString::fromStdString("geometry." + number));
    file.write(line("C Binary") + line("timestep " + std::to_string(step.number)) + line("made by brenmark export") +
               line("node id off") + line("element id off"));
    for (const SPiece& piece : step.pieces) {
        const bool hasTriangles = !piece.triangles.empty();
        file.write(line("part") + integer(partNumber(piece.kind)) + line(piece.kind) + line("coordinates") +
                   integer(static_cast<qint32>(piece.pointCount())));
        for (std::size_t axis = 0; axis < 3; ++axis)
            file.write(floats(piece.points, 3, axis));
        std::string cells = line(hasTriangles ? "tria3" : "point") + integer(static_cast<qint32>(piece.rows()));
        for (std::size_t i = 0; i < (hasTriangles ? piece.triangles.size() : piece.rows()); ++i)
            cells += integer(static_cast<qint32>(hasTriangles ? piece.triangles[i] : i) + 1);
        file.write(cells);
    }
    file.commit();
}

/// "Normal Force" of contacts: "contacts_Normal_Force", with nothing that the format parts words by.
static std::string stemOf(const SPiece& piece, const std::string& name)
{
    std::string stem = piece.kind + '_' + name;
    for (char& c : stem)
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')))
            c = '_';
    return stem;
}

/// Two names may come to one stem.
std::string CEnsightWriter::freeStem(const SPiece& piece, const std::string& name)
{
    const std::string key = piece.kind + '/' + name;
    if (const auto known = stems.find(key); known != stems.end())
        return known->second;
    std::string stem = stemOf(piece, name);
    const auto isTaken = [&] {
        return std::any_of(stems.begin(), stems.end(), [&](const auto& one) { return one.second == stem; });
    };
    while (isTaken())
        stem += '_';
    return stems[key] = stem;
}

void CEnsightWriter::writeValues(const SExportStep& step, const std::string& number)
{
    for (const SPiece& piece : step.pieces) {
        const bool hasTriangles = !piece.triangles.empty();
        const std::string where = hasTriangles ? "element" : "node";
        const std::string head = line("values") + line("part") + integer(partNumber(piece.kind)) +
                                 line(hasTriangles ? "tria3" : "coordinates");
        for (const SPieceArray& array : piece.arrays) {
            const bool isVector = array.columns == 3;
            for (std::size_t column = 0; column < (isVector ? 1 : array.columns); ++column) {
                const bool isPart = !isVector && array.columns > 1;
                const std::string stem = freeStem(piece, array.name + (isPart ? ' ' + std::to_string(column + 1) : ""));
                std::string values = floats(array.values, array.columns, column);
                for (std::size_t more = 1; isVector && more < 3; ++more)
                    values += floats(array.values, array.columns, more);
                CTargetFile file(folder + QString::fromStdString(stem).append('.').append(number.c_str()));
                file.write(head);
                file.write(values);
                file.commit();
                SVariable& variable = variables[stem];
                variable.declaration = isVector ? "vector per " : "scalar per ";
                variable.declaration.append(where).append(": 1 ").append(stem).append(" ").append(stem);
                variable.timesteps.insert(times.size());
            }
        }
    }
}

/// "000012"
static std::string numberOf(std::size_t timestep)
{
    const std::string number = std::to_string(timestep);
    return std::string(number.size() < 6 ? 6 - number.size() : 0, '0') + number;
}

void CEnsightWriter::write(SExportStep& step)
{
    const std::string number = numberOf(times.size());
    writeGeometry(step, number);
    writeValues(step, number);
    times.push_back(step.time);
}

/// A variable has a file at each timestep, if one without values.
void CEnsightWriter::writeMissing(const std::string& stem, const SVariable& variable) const
{
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (variable.timesteps.count(i) != 0)
            continue;
        CTargetFile file(folder + QString::fromStdString(stem).append('.').append(numberOf(i).c_str()));
        file.write(line("no values") + line("")); // a reader takes a file of one line for one that is cut short
        file.commit();
    }
}

void CEnsightWriter::finish()
{
    const std::string stars = ".******\n";
    std::string text = "FORMAT\ntype: ensight gold\n\nGEOMETRY\nmodel: 1 geometry" + stars + "\nVARIABLE\n";
    for (const auto& [stem, variable] : variables) {
        text += variable.declaration + stars;
        writeMissing(stem, variable);
    }
    text += "\nTIME\ntime set: 1\nnumber of steps: " + std::to_string(times.size()) +
            "\nfilename start number: 0\nfilename increment: 1\ntime values:\n";
    for (const double time : times)
        text += exactNumber(time) + '\n';
    caseFile.write(text);
    caseFile.commit();
}

std::unique_ptr<IExportWriter> ensightWriter(const QString& folder) { return std::make_unique<CEnsightWriter>(folder); }

} // namespace NBrenmark
