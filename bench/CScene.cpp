#include "bench/CScene.h"

CScene::CScene()
{
    for (int i = 0; i < SERVICES; ++i)
        m_cServices[i] = m_cStage.start(static_cast<EService>(i));
}
