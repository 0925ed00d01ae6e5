#ifndef HALDEND_BENCH_CBUSDAEMON_H
#define HALDEND_BENCH_CBUSDAEMON_H

#include "bench/CProcess.h"

#include <optional>
#include <string>

class CTemporaryDirectory;

/// A bus of the bench's own, in the place of the system bus.
class CBusDaemon
{
public:
    /// Starts it; it accepts connections when the constructor returns. Throws when it doesn't come up.
    explicit CBusDaemon(const CTemporaryDirectory& rcDirectory);

    /// What DBUS_SYSTEM_BUS_ADDRESS has to hold for its clients.
    const std::string& address() const { return m_cAddress; }

private:
    std::string m_cAddress;
    std::optional<CProcess> m_cProcess;
};

#endif
