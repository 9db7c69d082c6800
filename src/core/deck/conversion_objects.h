#pragma once
// What is process-wide while a conversion runs.

#include "analysis/data_miner.h"
#include "config/application_roles.h"
#include "core/deck/application_state.h"
#include "core/log.h"
#include "core/thread_pool.h"
#include "core/worker.h"

#include <optional>

namespace NBrenmark {

/// The process-wide objects of one conversion. Whatever ends it, they go again, and nothing is
/// stored beside the source.
class CConversionObjects
{
public:
    CConversionObjects();
    ~CConversionObjects();
    CConversionObjects(const CConversionObjects&) = delete;
    CConversionObjects& operator=(const CConversionObjects&) = delete;

    CSimulation& simulation() { return *applicationState().simulation; }

    CThreadPool pool{threadCount()};
    CKeptThread kept;
    CPersistentLogger logger{eWarning};
    bool ready = false;

private:
    std::optional<SApplicationRoles> roles;
    std::optional<CDataMiners> miners;
};

} // namespace NBrenmark
