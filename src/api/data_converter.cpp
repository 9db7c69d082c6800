#include "api/data_converter.h"

#include "core/deck/conversion.h"
#include "core/deck/deck_files.h"

namespace NBrenmark {

static_assert(int(CDataConverter::eFormatUnknown) == int(NBrenmark::eFormatUnknown) &&
                  int(CDataConverter::eFormatLegacy) == int(NBrenmark::eFormatLegacy) &&
                  int(CDataConverter::eFormatHdf5) == int(NBrenmark::eFormatHdf5),
              "hosts see the formats by the numbers of the library");

/// All that a converter holds, and the ear that turns what it hears into signals.
struct CDataConverter::SState : IConversionObserver
{
    explicit SState(CDataConverter& host) : host(host) {}

    void starting(int steps, const QString& title) override { emit host.starting(steps, title, false); }
    void stepReached(int step) override { emit host.currentStepUpdate(step); }
    void completed() override { emit host.completed(); }

    CDataConverter& host;
    CConversion conversion{*this};
};

CDataConverter::CDataConverter() : state(std::make_unique<SState>(*this)) {}

CDataConverter::~CDataConverter() = default;

bool CDataConverter::legacyDataConversionRequired(const QString& path)
{
    return detectFormat(path) == NBrenmark::eFormatLegacy;
}

bool CDataConverter::convertSimulationData(const char* inputPath, const char* outputPath)
{
    return state->conversion.run(QString::fromUtf8(inputPath), QString::fromUtf8(outputPath), NBrenmark::eFormatHdf5) ==
           eConvertOk;
}

void CDataConverter::cancel() { state->conversion.cancel(); }

QString CDataConverter::getError() const { return state->conversion.errorText(); }

std::vector<std::tuple<int, std::string, std::string>> CDataConverter::getLogMessages() const
{
    std::vector<std::tuple<int, std::string, std::string>> messages;
    for (const SLogRecord& message : state->conversion.records())
        messages.emplace_back(static_cast<int>(message.level), message.title, message.placedText());
    return messages;
}

} // namespace NBrenmark
