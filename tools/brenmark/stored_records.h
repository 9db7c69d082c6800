#pragma once
// The records of blocks below 20.0.0 as text, before they become rows of the current model: what dump --stored prints.

#include "io/text/text_output.h"
#include "legacy/old_records.h"

#include <exception>
#include <set>
#include <string>
#include <utility>

namespace NBrenmark {

class CCreatorData;

class CStoredRecords : public NLegacySupport::IOldRecordListener
{
public:
    /// \param sink   not owned
    /// \param model  that is read with the timesteps; not owned
    CStoredRecords(ITextSink& sink, const CCreatorData& model) : sink(sink), model(model) {}

    /// What follows is of the read of this timestep.
    void enter(quint32 timestep) { number = timestep; }
    /// Records so far.
    quint64 count() const { return heard; }
    /// Throws what the sink threw while a record was heard: the thread that reads doesn't get it.
    void rethrow() const;

    void begin(const char* name) override;
    void hear(const NLegacySupport::CParticlePrototype& record, qint64 byte) override;
    void hear(const NLegacySupport::SLegacyContact& record, qint64 byte) override;
    void hear(const NLegacySupport::CSurfSurfBond& record, qint64 byte) override;
    void hear(const NLegacySupport::CSurfSurfCollision& record, qint64 byte) override;
    void hear(const NLegacySupport::CSurfGeomCollision& record, qint64 byte) override;

private:
    template <class TBody>
    void record(qint64 byte, TBody&& body);

    ITextSink& sink;
    const CCreatorData& model;
    std::set<std::pair<quint64, quint64>> shownModels; ///< a block is read again after its geometry was replaced
    bool isShown = false;
    quint32 number = 0;
    std::string list;
    quint64 next = 0; ///< in that list
    quint64 heard = 0;
    bool withGeometry = false;
    std::exception_ptr failure;
};

} // namespace NBrenmark
