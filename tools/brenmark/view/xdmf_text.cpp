#include "brenmark/view/xdmf_text.h"

#include "brenmark/plot_axis.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_table.h"

#include <algorithm>

namespace NBrenmark {

const char* const xdmfMark = "<!-- made by brenmark view -->";

std::string xdmfHead()
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + std::string(xdmfMark) +
           "\n<Xdmf Version=\"2.0\">\n<Domain>\n"
           "<Grid Name=\"timesteps\" GridType=\"Collection\" CollectionType=\"Temporal\">\n";
}

std::string xdmfEnd() { return "</Grid>\n</Domain>\n</Xdmf>\n"; }

bool isXdmfPath(const std::string& path)
{
    // What oneLine would change isn't the file's name any more; neither is what XML makes of a tab.
    return !path.empty() && path.find_first_of(":|\t") == std::string::npos && path.front() != ' ' &&
           path.back() != ' ' && oneLine(path) == path;
}

static std::string dimensions(quint64 rows, quint64 columns)
{
    return '"' + std::to_string(rows) + (columns == 0 ? "" : ' ' + std::to_string(columns)) + '"';
}

static std::string storedItem(const SNamedArray& array)
{
    const char* const type = array.kind == eFloats   ? "Float\" Precision=\"8"
                             : array.kind == eSigned ? "Int\" Precision=\"4"
                                                     : "UInt\" Precision=\"4";
    return "<DataItem Format=\"HDF\" NumberType=\"" + std::string(type) +
           "\" Dimensions=" + dimensions(array.rows, array.columns) + ">" + svgText(array.file) + ":" +
           svgText(array.dataset) + "</DataItem>";
}

static std::string item(const SNamedArray& array)
{
    std::string text = storedItem(array);
    const bool isPart = array.shownColumns != 0;
    const quint64 columns = isPart ? array.shownColumns : array.columns;
    if (isPart)
        text = "<DataItem ItemType=\"HyperSlab\" Dimensions=" + dimensions(array.rows, columns) +
               "><DataItem Format=\"XML\" NumberType=\"Int\" Dimensions=\"3 2\">0 " +
               std::to_string(array.firstColumn) + " 1 1 " + std::to_string(array.rows) + ' ' +
               std::to_string(columns) + "</DataItem>" + text + "</DataItem>";
    if (array.factor != 1.0)
        text = "<DataItem ItemType=\"Function\" Function=\"$0 * " + exactNumber(array.factor) +
               "\" Dimensions=" + dimensions(array.rows, columns) + ">" + text + "</DataItem>";
    return text;
}

static std::string attribute(const SNamedArray& array, bool ofTriangles)
{
    const quint64 columns = array.shownColumns != 0 ? array.shownColumns : array.columns;
    const char* const type = columns <= 1 ? "Scalar" : columns == 3 ? "Vector" : "Matrix";
    return "<Attribute Name=\"" + svgText(array.name) + "\" AttributeType=\"" + type + "\" Center=\"" +
           (ofTriangles ? "Cell" : "Node") + "\">" + item(array) + "</Attribute>\n";
}

static std::string gridText(const SGrid& grid)
{
    const bool hasTriangles = grid.triangles.rows > 0;
    std::string text = "<Grid Name=\"" + svgText(grid.name) + "\" GridType=\"Uniform\">\n";
    if (hasTriangles)
        text += "<Topology TopologyType=\"Triangle\" NumberOfElements=\"" + std::to_string(grid.triangles.rows) +
                "\">" + item(grid.triangles) + "</Topology>\n";
    else
        text += "<Topology TopologyType=\"Polyvertex\" NumberOfElements=\"" + std::to_string(grid.points.rows) +
                "\" NodesPerElement=\"1\"/>\n";
    text += "<Geometry GeometryType=\"XYZ\">" + item(grid.points) + "</Geometry>\n";
    for (const SNamedArray& values : grid.values)
        text += attribute(values, hasTriangles);
    return text + "</Grid>\n";
}

static std::string boxText(const SBoxOutline& box)
{
    std::string corners;
    for (int corner = 0; corner < 8; ++corner)
        for (int axis = 0; axis < 3; ++axis)
            corners += (corners.empty() ? "" : " ") +
                       exactNumber(((corner >> axis) & 1) != 0 ? box.upper[axis] : box.lower[axis]);
    // Corner numbers differ in one bit along an edge.
    return "<Grid Name=\"domain\" GridType=\"Uniform\">\n"
           "<Topology TopologyType=\"Polyline\" NumberOfElements=\"12\" NodesPerElement=\"2\">"
           "<DataItem Format=\"XML\" NumberType=\"Int\" Dimensions=\"12 2\">"
           "0 1 2 3 4 5 6 7 0 2 1 3 4 6 5 7 0 4 1 5 2 6 3 7</DataItem></Topology>\n"
           "<Geometry GeometryType=\"XYZ\"><DataItem Format=\"XML\" NumberType=\"Float\" Precision=\"8\" "
           "Dimensions=\"8 3\">" +
           corners + "</DataItem></Geometry>\n</Grid>\n";
}

std::string xdmfStep(const SViewStep& step)
{
    std::string text = "<Grid Name=\"timestep " + std::to_string(step.number) +
                       "\" GridType=\"Collection\" CollectionType=\"Spatial\">\n<Time Value=\"" +
                       exactNumber(step.time) + "\"/>\n";
    for (const SGrid& grid : step.grids)
        text += gridText(grid);
    for (const SBoxOutline& box : step.domain)
        text += boxText(box);
    return text + "</Grid>\n";
}

} // namespace NBrenmark
