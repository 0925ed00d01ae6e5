#ifndef HALDEND_BENCH_CSCENE_H
#define HALDEND_BENCH_CSCENE_H

#include "bench/CStage.h"

#include <memory>

/// A stage with all services on it, each at work from the beginning to the end, side by side with the others. All of
/// them are ready when the constructor returns.
class CScene
{
public:
    /// Throws like the stage.
    CScene();

    CBusClient& client() { return m_cStage.client(); }
    const CVirtualBoard& board() const { return m_cStage.board(); }
    const SService& service(EService eService) const { return *m_cServices[eService]; }

private:
    CStage m_cStage;
    std::unique_ptr<SService> m_cServices[SERVICES];
};

#endif
