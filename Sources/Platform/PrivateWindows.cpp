#include "Platform/PrivateWindows.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Base/Text.h"

namespace stintbook {

namespace {

/// What the browsers' own words for a private window begin with or contain, without regard to case and
/// accents. Firefox says "Private Browsing", Chromium "(Incognito)", Edge "[InPrivate]", Brave, Opera
/// and Vivaldi "(Private)", each in its user's language.
constexpr auto marks = std::to_array<std::string_view>({
    "incognito", // English, Italian, Dutch, Polish, Romanian, Spanish and Portuguese with an accent
    "inkognit", // German, Danish, Norwegian, Swedish, Czech, Hungarian, Turkish
    "privat", // English, German, Danish, Norwegian, Swedish, Catalan, Romanian, Hungarian, Estonian
    "privé", // French, Dutch
    "privad", // Spanish, Portuguese
    "anonim", // Italian, Portuguese, Spanish, Croatian
    "anonym", // Czech, Slovak, German, French
    "prywatn", // Polish
    "soukrom", // Czech
    "súkromn", // Slovak
    "zasebn", // Slovenian
    "yksityi", // Finnish
    "gizli", // Turkish
    "ιδιωτικ", // Greek
    "ανώνυμ", // Greek
    "приват", // Russian, Bulgarian, Ukrainian, Serbian
    "инкогнито", // Russian, Bulgarian
    "інкогніто", // Ukrainian
    "анонім", // Ukrainian
    "פרטי", // Hebrew
    "סתר", // Hebrew
    "خاص", // Arabic
    "متخف", // Arabic
    "プライベート", // Japanese
    "シークレット", // Japanese
    "隐私",         "隐身",       "无痕", // Chinese, simplified
    "隱私",         "私密",       "無痕", // Chinese, traditional
    "사생활",       "시크릿",     "비공개", // Korean
    "riêng tư",     "ẩn danh", // Vietnamese
    "samaran",      "penyamaran", // Malay, Indonesian
    "ส่วนตัว",        "ไม่ระบุตัวตน", // Thai
    "निजी",         "गुप्त", // Hindi
});

const std::vector<std::string>& foldedMarks()
{
    static const auto folded = [] {
        std::vector<std::string> texts;
        for (auto mark : marks)
            texts.push_back(foldedForSearch(mark));
        return texts;
    }();
    return folded;
}

/// Where a browser names itself: after the last dash that has space around it.
std::string_view ownPart(std::string_view name)
{
    std::size_t start = 0;
    for (std::string_view dash : {" — ", " – ", " - "}) {
        if (auto at = name.rfind(dash); at != name.npos)
            start = std::max(start, at + dash.size());
    }
    return name.substr(start);
}

} // namespace

bool isMarkedPrivate(std::string_view windowName)
{
    auto own = foldedForSearch(ownPart(windowName));
    // Edge puts its mark before its name, between dashes of its own.
    if (foldedForSearch(windowName).find("[inprivate]") != std::string::npos)
        return true;
    return std::ranges::any_of(foldedMarks(),
                               [&](const std::string& mark) { return own.find(mark) != own.npos; });
}

} // namespace stintbook
