#pragma once
// How values are shown as colours, and the chart that explains them: records that are carried along.

#include "maths/vector.h"

#include <QColor>
#include <QString>

#include <array>

namespace NBrenmark {

class IEntryForm;

/// The legend of a colour scale.
class CColourChart
{
public:
    void form(IEntryForm& f);

    double width = 0.0;
    double height = 0.0;
    qint32 intervals = 0;
    QString title;
    QColor textColour = Qt::black;
    qint32 levels = 0;
    qint32 alignment = 0;
    bool autoTitle = false;
    bool enabled = false;
    qint32 digits = 2;
    bool useDecimal = false;
    bool smooth = false;
    C3DPoint startPoint;
};

/// A scale of nine colours from the least to the greatest value, red, green and blue from 0 to 1.
class CColour
{
public:
    static constexpr size_t colourCount = 9;

    void form(IEntryForm& f);

    double minimum = 0.0;
    double maximum = 0.0;
    bool autoMinimum = false;
    bool autoMaximum = false;
    std::array<C3DPoint, colourCount> colours; ///< of minimum, three low ones, middle, three high ones, maximum
    C3DPoint staticColour;
    CColourChart chart;

private:
    void spreadThree();
};

} // namespace NBrenmark
