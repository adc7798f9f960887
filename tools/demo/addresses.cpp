#include "demo/addresses.h"

#include "demo/names.h"

#include <array>

namespace orvo::demo {

namespace {

struct province {
    int branch;
    std::string_view name;
    std::string_view area;
    std::string_view post; ///< the first two digits
    bool is_city;
};

constexpr std::array provinces = std::to_array<province>({
    {0, "서울특별시", "02", "11", true},    {10, "서울특별시", "02", "13", true},
    {10, "서울특별시", "02", "15", true},   {20, "부산광역시", "051", "60", true},
    {30, "인천광역시", "032", "40", true},  {40, "경기도", "031", "44", false},
    {40, "경기도", "031", "47", false},     {50, "강원도", "033", "20", false},
    {60, "충청북도", "043", "36", false},   {70, "대전광역시", "042", "30", true},
    {70, "충청남도", "041", "33", false},   {80, "전라북도", "063", "56", false},
    {90, "광주광역시", "062", "50", true},  {90, "전라남도", "061", "53", false},
    {100, "대구광역시", "053", "70", true}, {100, "경상북도", "054", "76", false},
    {110, "경상남도", "055", "64", false},  {120, "울산광역시", "052", "68", true},
    {130, "제주도", "064", "69", false},
});

constexpr std::array districts =
    std::to_array<std::string_view>({"가람", "새터",   "한뫼",   "솔밭", "은빛",   "다온", "자운",   "태봉",
                                     "큰들", "달마루", "윗말",   "버들", "모래내", "꽃재", "쌍샘",   "돌다리",
                                     "학골", "대숲",   "범바위", "물안", "갈매",   "서래", "동구밖", "매봉"});

constexpr std::array quarters = std::to_array<std::string_view>(
    {"은하", "감나무", "배꽃", "소담", "옹달샘", "너른", "두물", "살구", "찬우물", "오름",
     "볕들", "느티",   "장승", "수련", "봉화",   "하얀", "물레", "종달", "앵두",   "미리내"});

constexpr std::array flats = std::to_array<std::string_view>({"아파트", "빌라", "맨션", "연립", "오피스텔"});

const province& province_of(random_stream& random, int branch)
{
    std::array<const province*, 2> found{};
    int count = 0;
    for (const province& each : provinces)
        if (each.branch == branch)
            found[static_cast<std::size_t>(count++)] = &each;
    return *found[static_cast<std::size_t>(random.below(count))];
}

std::string digits(random_stream& random, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += static_cast<char>('0' + random.below(10));
    return text;
}

address street(random_stream& random, int branch)
{
    const neighbourhood where = any_neighbourhood(random, branch);
    address made{where.post, std::string{where.province}, where.area};
    made.text += " " + where.district + " " + where.name + " " + std::to_string(random.between(1, 980));
    if (random.chance(700))
        made.text += "-" + std::to_string(random.between(1, 40));
    return made;
}

} // namespace

neighbourhood any_neighbourhood(random_stream& random, int branch)
{
    const province& where = province_of(random, branch);
    neighbourhood made{std::string{where.post} + digits(random, 4), where.name, {}, {}, where.area};
    made.district = random.pick(districts);
    made.district += where.is_city ? "구" : random.chance(600) ? "시" : "군";
    made.name = random.pick(quarters);
    made.name += where.is_city || random.chance(600) ? "동" : random.chance(500) ? "읍" : "면";
    return made;
}

address home_address(random_stream& random, int branch)
{
    address made = street(random, branch);
    if (random.chance(650)) {
        made.text += " ";
        made.text += house_name(random);
        made.text += random.pick(flats);
        made.text += " " + std::to_string(random.between(101, 125));
        made.text += "동 " + std::to_string(random.between(1, 25));
        made.text += "0" + std::to_string(random.between(1, 8)) + "호";
    }
    return made;
}

address work_address(random_stream& random, int branch)
{
    address made = street(random, branch);
    if (random.chance(200)) {
        made.text += " ";
        made.text += house_name(random);
        made.text += "빌딩 " + std::to_string(random.between(1, 20)) + "층";
    }
    return made;
}

std::string_view district_name(int number)
{
    return districts[static_cast<std::size_t>(number) % districts.size()];
}

std::string line_number(random_stream& random, std::string_view area)
{
    return std::string{area} + "1" + digits(random, random.chance(600) ? 6 : 7);
}

std::string mobile_number(random_stream& random)
{
    static constexpr std::array old_networks =
        std::to_array<std::string_view>({"011", "016", "017", "018", "019"});
    if (random.chance(120))
        return std::string{random.pick(old_networks)} + "0" + digits(random, 6);
    return "0100" + digits(random, 7);
}

} // namespace orvo::demo
