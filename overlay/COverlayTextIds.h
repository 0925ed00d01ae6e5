/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYTEXTIDS_H
#define HALDEND_OVERLAY_COVERLAYTEXTIDS_H

#include <set>
#include <utility>

/// The ids that clients gave to texts. Any number of texts may share an id. An index beside the texts: the
/// video counter looks its text up on every tick, which must not take longer with many texts.
class COverlayTextIds
{
public:
    /// Adds or removes a pair. Does nothing if the pair is there already, or isn't.
    void insert(unsigned int uId, unsigned int uHandle);
    void remove(unsigned int uId, unsigned int uHandle);

    /// The lowest handle with the id, 0 if there is none.
    unsigned int findHandle(unsigned int uId) const;

private:
    std::set<std::pair<unsigned int, unsigned int>> m_cHandles; ///< id, handle
};

#endif
