#include "workbooks/model/OpenExcel.h"

#include <algorithm>

namespace excel {

Application& OpenExcel(Applications& applications)
{
    const auto answering =
        std::find_if(applications.rbegin(), applications.rend(),
                     [](const auto& application) { return application->isRunning(); });
    if (answering != applications.rend())
        return **answering;
    applications.push_back(std::make_unique<Application>());
    applications.back()->setVisible(true);
    return *applications.back();
}

} // namespace excel
