#include "platform/widgets/Unsaved.h"

#include "platform/runtime/Dialogs.h"

namespace widgets {

bool settleUnsaved(const QString& text, const std::function<bool()>& save)
{
    const runtime::Unsaved answer = runtime::askAboutUnsaved(text);
    return answer == runtime::Unsaved::Save ? save() : answer == runtime::Unsaved::Discard;
}

} // namespace widgets
