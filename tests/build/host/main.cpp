#include <Brenmark/data_converter.h>
#include <cstdio>
int main(int, char** argv)
{
    NBrenmark::CDataConverter converter;
    QObject::connect(&converter, &NBrenmark::CDataConverter::starting,
                     [](int steps, const QString& title) { std::printf("%s %d\n", qPrintable(title), steps); });
    QObject::connect(&converter, &NBrenmark::CDataConverter::currentStepUpdate, [](int s) { std::printf("%d ", s); });
    QObject::connect(&converter, &NBrenmark::CDataConverter::completed, [] { std::puts("completed"); });
    if (!NBrenmark::CDataConverter::legacyDataConversionRequired(argv[1]))
        return 2;
    return converter.convertSimulationData(argv[1], argv[2]) ? 0 : 1;
}
