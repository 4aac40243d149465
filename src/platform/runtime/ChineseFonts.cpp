#include "platform/runtime/ChineseFonts.h"

namespace runtime {

using namespace Qt::StringLiterals;

QStringList chineseFontFamilies()
{
    return {u"Microsoft YaHei"_s, u"Noto Sans CJK SC"_s, u"WenQuanYi Micro Hei"_s,
            u"Droid Sans Fallback"_s};
}

} // namespace runtime
