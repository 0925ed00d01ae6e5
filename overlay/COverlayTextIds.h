#ifndef HALDEND_OVERLAY_COVERLAYTEXTIDS_H
#define HALDEND_OVERLAY_COVERLAYTEXTIDS_H

#include <set>
#include <utility>

/// Which texts carry which id. Clients choose ids freely, so any number of texts may share one. Kept beside the
/// texts, because a search on every tick of the counter can't look at all of them.
class COverlayTextIds
{
public:
    void insert(unsigned int uId, unsigned int uHandle);
    void remove(unsigned int uId, unsigned int uHandle);

    /// The lowest handle of those that carry the id, 0 if none does.
    unsigned int findHandle(unsigned int uId) const;

private:
    std::set<std::pair<unsigned int, unsigned int>> m_cHandles; ///< id, handle
};

#endif
