#include "Base/BuildInformation.h"

namespace stintbook {

BuildKind buildKind()
{
    constexpr std::string_view kind = STINTBOOK_BUILD_KIND;
    return kind == "installed" ? BuildKind::installed : BuildKind::development;
}

std::string_view version()
{
    return STINTBOOK_VERSION;
}

} // namespace stintbook
