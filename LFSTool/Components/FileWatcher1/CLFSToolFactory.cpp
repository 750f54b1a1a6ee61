#include "CLFSToolFactory.h"

std::unique_ptr<CSystemWatcher>
CLFSToolFactory::CreateSystemWatcher(IEventsSender<IApplicationEvents>* pApplication)
{
    auto pWatcher = std::make_unique<CSystemWatcher>();
    if (!pWatcher->Start())
        return nullptr;
    pWatcher->Create(pApplication);
    return pWatcher;
}
