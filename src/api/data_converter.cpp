// Hands calls and signals on between a host and CConversion, so that no host sees a header of the inside.
#include "api/data_converter.h"

#include "core/deck/application_state.h"
#include "core/deck/conversion.h"
#include "core/deck/deck_files.h"
#include "physics/plugins/host/user_plugins.h"

namespace NBrenmark {

// Hosts see formats, outcomes, effects and causes by the numbers of the library.
static_assert(int(CDataConverter::eFormatUnknown) == int(NBrenmark::eFormatUnknown) &&
              int(CDataConverter::eFormatLegacy) == int(NBrenmark::eFormatLegacy) &&
              int(CDataConverter::eFormatHdf5) == int(NBrenmark::eFormatHdf5));
static_assert(int(CDataConverter::eNotRun) == int(eOutcomeNotRun) &&
              int(CDataConverter::eConverted) == int(eOutcomeConverted) &&
              int(CDataConverter::eNothingToDo) == int(eOutcomeNothingToDo) &&
              int(CDataConverter::eNotADeck) == int(eOutcomeNotADeck) &&
              int(CDataConverter::eCancelled) == int(eOutcomeCancelled) &&
              int(CDataConverter::eFailed) == int(eOutcomeFailed) && int(CDataConverter::eBusy) == int(eOutcomeBusy));
static_assert(int(SConversionMessage::eWarning) == int(eWarning) && int(SConversionMessage::eError) == int(eError));
static_assert(int(SConversionMessage::eRemark) == int(eRemark) && int(SConversionMessage::eLost) == int(eLost) &&
              int(SConversionMessage::eDefaulted) == int(eDefaulted) &&
              int(SConversionMessage::eRepaired) == int(eRepaired) &&
              int(SConversionMessage::eUpgraded) == int(eUpgraded) &&
              int(SConversionMessage::eNotCarried) == int(eNotCarried) &&
              int(SConversionMessage::eCarriedUnread) == int(eCarriedUnread));
static_assert(int(SConversionMessage::eCauseNone) == int(eCauseNone) &&
              int(SConversionMessage::eCauseSource) == int(eCauseSource) &&
              int(SConversionMessage::eCauseTarget) == int(eCauseTarget) &&
              int(SConversionMessage::eCauseNames) == int(eCauseNames) &&
              int(SConversionMessage::eCauseUnsupported) == int(eCauseUnsupported) &&
              int(SConversionMessage::eCauseMemory) == int(eCauseMemory) &&
              int(SConversionMessage::eCauseInternal) == int(eCauseInternal));

/// All that a converter holds, and the ear that turns what it hears into signals.
struct CDataConverter::SState : IConversionObserver
{
    explicit SState(CDataConverter& host) : host(host) {}

    void starting(int steps, const QString& title) override { Q_EMIT host.starting(steps, title, false); }
    void stepReached(int step) override { Q_EMIT host.currentStepUpdate(step); }
    void completed() override { Q_EMIT host.completed(); }

    CDataConverter& host;
    CConversion conversion{*this};
    bool bindsPlugins = false;
};

CDataConverter::CDataConverter() : state(std::make_unique<SState>(*this)) { openLibraries(); }

CDataConverter::~CDataConverter() = default;

bool CDataConverter::legacyDataConversionRequired(const QString& path)
{
    return detectFormat(path) == NBrenmark::eFormatLegacy;
}

bool CDataConverter::convertSimulationData(const char* inputPath, const char* outputPath)
{
    SConversionOptions options;
    if (state->bindsPlugins && !areUserPluginsForbidden())
        options.bindPlugins = [] { return std::make_shared<const CUserPlugins>(); };
    return state->conversion.run(QString::fromUtf8(inputPath), QString::fromUtf8(outputPath), NBrenmark::eFormatHdf5,
                                 options) == eConvertOk;
}

void CDataConverter::bindPlugins(bool bind) { state->bindsPlugins = bind; }

void CDataConverter::cancel() { state->conversion.cancel(); }

CDataConverter::EOutcome CDataConverter::outcome() const { return static_cast<EOutcome>(state->conversion.outcome()); }

QString CDataConverter::failureText() const { return state->conversion.failureText(); }

QString CDataConverter::getError() const { return state->conversion.errorText(); }

std::vector<std::tuple<int, std::string, std::string>> CDataConverter::getLogMessages() const
{
    std::vector<std::tuple<int, std::string, std::string>> messages;
    for (const SLogRecord& message : state->conversion.records())
        messages.emplace_back(static_cast<int>(message.level), message.title, message.placedText());
    return messages;
}

std::vector<SConversionMessage> CDataConverter::messages() const
{
    std::vector<SConversionMessage> messages;
    for (const SLogRecord& record : state->conversion.records()) {
        SConversionMessage message;
        message.level = static_cast<SConversionMessage::ELevel>(record.level);
        message.title = record.title;
        message.text = record.text;
        message.effect = static_cast<SConversionMessage::EEffect>(record.effect);
        message.cause = static_cast<SConversionMessage::ECause>(record.cause);
        message.file = record.place.file;
        if (record.place.timestep)
            message.timestep = *record.place.timestep;
        message.block = record.place.block;
        message.object = record.place.object;
        message.count = record.count;
        messages.push_back(std::move(message));
    }
    return messages;
}

} // namespace NBrenmark
