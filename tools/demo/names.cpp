#include "demo/names.h"

#include <array>

namespace orvo::demo {

namespace {

struct surname {
    std::string_view text;
    int weight;
};

constexpr std::array surnames = std::to_array<surname>(
    {{"김", 2150}, {"이", 1470}, {"박", 840}, {"최", 470}, {"정", 430}, {"강", 240}, {"조", 210}, {"윤", 200},
     {"장", 195},  {"임", 165},  {"한", 150}, {"오", 150}, {"서", 150}, {"신", 145}, {"권", 140}, {"황", 130},
     {"안", 130},  {"송", 130},  {"전", 110}, {"홍", 105}, {"유", 120}, {"고", 90},  {"문", 90},  {"양", 90},
     {"손", 85},   {"배", 80},   {"백", 75},  {"허", 65},  {"남", 55},  {"심", 50},  {"노", 50},  {"하", 46},
     {"곽", 40},   {"성", 40},   {"차", 38},  {"주", 38},  {"우", 38},  {"구", 38},  {"민", 34},  {"진", 32},
     {"나", 30},   {"엄", 28},   {"채", 26},  {"원", 26},  {"천", 24},  {"방", 22},  {"현", 18},  {"변", 18},
     {"염", 14},   {"여", 12},   {"추", 12},  {"도", 10},  {"소", 10},  {"석", 10},  {"마", 8},   {"표", 6},
     {"명", 6},    {"기", 6},    {"남궁", 4}, {"황보", 2}, {"제갈", 2}, {"선우", 2}, {"독고", 1}});

// The taste of three generations.
constexpr std::array first_old = std::to_array<std::string_view>(
    {"영", "정", "순", "옥", "명", "경", "춘", "말", "금", "복", "인", "종", "병", "태"});
constexpr std::array last_old_female =
    std::to_array<std::string_view>({"자", "숙", "희", "순", "옥", "임", "례", "분", "란", "애"});
constexpr std::array first_middle = std::to_array<std::string_view>(
    {"미", "은", "경", "현", "정", "선", "혜", "영", "수", "윤", "진", "성", "상", "재", "동", "주"});
constexpr std::array last_middle_female =
    std::to_array<std::string_view>({"정", "경", "주", "희", "영", "숙", "미", "아", "연", "선", "진", "화"});
constexpr std::array first_young = std::to_array<std::string_view>(
    {"지", "서", "민", "예", "유", "하", "수", "채", "다", "가", "소", "나", "윤", "도", "시", "아"});
constexpr std::array last_young_female = std::to_array<std::string_view>(
    {"은", "연", "현", "원", "윤", "영", "빈", "린", "아", "희", "서", "나", "솔"});
constexpr std::array last_male = std::to_array<std::string_view>(
    {"수", "호", "석", "철", "훈", "민", "준", "우", "식", "환", "규", "섭", "용", "혁", "기"});

constexpr std::array houses = std::to_array<std::string_view>(
    {"한빛", "늘봄",   "다솜", "가온",   "누리",   "새날",   "푸른솔", "해오름", "두레",     "은하",
     "미르", "온새미", "아라", "초록뜰", "하늘채", "별마루", "큰나래", "고운",   "참빛",     "이든",
     "단비", "보람",   "솔향", "여울",   "라온",   "햇살",   "도담",   "마루",   "시나브로", "윤슬"});

constexpr std::array syllables = std::to_array<std::string_view>(
    {"ga", "na", "da", "ra", "ma", "ba", "sa", "ha", "ji", "mi", "su", "yu", "no", "so", "hye", "min"});

} // namespace

std::string person_name(random_stream& random, bool male, int birth_year)
{
    static const std::array weights = [] {
        std::array<int, surnames.size()> all{};
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = surnames[i].weight;
        return all;
    }();
    std::string name{surnames[random.weighted(weights)].text};
    if (birth_year < 1960)
        name += random.pick(first_old);
    else if (birth_year < 1985)
        name += random.pick(first_middle);
    else
        name += random.pick(first_young);
    if (random.chance(8)) // a given name of one syllable
        return name;
    if (male)
        name += random.pick(last_male);
    else if (birth_year < 1960)
        name += random.pick(last_old_female);
    else if (birth_year < 1985)
        name += random.pick(last_middle_female);
    else
        name += random.pick(last_young_female);
    return name;
}

std::string_view house_name(random_stream& random)
{
    return random.pick(houses);
}

std::string login_of(random_stream& random, int number)
{
    std::string login{random.pick(syllables)};
    login += random.pick(syllables);
    return login + std::to_string(number);
}

} // namespace orvo::demo
