#include "demo/codes.h"

#include "demo/addresses.h"
#include "demo/names.h"

#include <string>
#include <vector>

namespace orvo::demo {

namespace {

constexpr std::array kinds = std::to_array<member_kind>({
    {0, "미구분", 0, 0},
    {1, "정회원(집단급식)", 36000, 24000},
    {2, "정회원(비집단급식)", 30000, 20000},
    {3, "정회원(신규)", 42000, 28000},
    {4, "정회원(재가입)", 39000, 26000},
    {5, "정회원(미취업)", 18000, 12000},
    {6, "정회원(해외)", 24000, 16000},
    {7, "학생회원", 6000, 4000},
    {8, "특별회원(교수)", 33000, 22000},
    {9, "특별회원(단체)", 60000, 40000},
    {10, "평생회원(일시납)", 360000, 240000},
    {11, "평생회원(분납)", 420000, 280000},
    {12, "평생특별회원(교수)", 300000, 200000},
    {13, "평생특별회원(단체)", 600000, 400000},
});

constexpr std::array all_branches = std::to_array<branch>({
    {0, "본회", 15},
    {10, "서울지부", 240},
    {20, "부산지부", 80},
    {30, "인천지부", 60},
    {40, "경기지부", 190},
    {50, "강원지부", 40},
    {60, "충북지부", 40},
    {70, "대전충남지부", 75},
    {80, "전북지부", 50},
    {90, "광주전남지부", 65},
    {100, "대구경북지부", 85},
    {110, "경남지부", 75},
    {120, "울산지부", 30},
    {130, "제주지부", 20},
});

constexpr int business = 10;
constexpr int hospital = 20;
constexpr int school_division = 30;
constexpr int health_centre = 40;
constexpr int other = 0;

constexpr std::array classes = std::to_array<workplace_class>({
    {100, 10, 1, "산업체", "산업(주)", business, 150},
    {100, 10, 2, "관공서", "청사", business, 40},
    {100, 10, 3, "연수원", "연수원", business, 20},
    {100, 10, 4, "기숙사", "학사", business, 20},
    {100, 20, 1, "초등학교", "초등학교", school_division, 190},
    {100, 20, 2, "중학교", "중학교", school_division, 90},
    {100, 20, 3, "고등학교", "고등학교", school_division, 80},
    {100, 20, 4, "특수학교", "특수학교", school_division, 10},
    {100, 20, 5, "대학교", "대학교", school_division, 15},
    {100, 20, 6, "유치원", "유치원", school_division, 25},
    {100, 30, 1, "종합병원", "종합병원", hospital, 70},
    {100, 30, 2, "병원", "병원", hospital, 70},
    {100, 30, 3, "한방병원", "한방병원", hospital, 20},
    {100, 30, 4, "요양병원", "요양병원", hospital, 60},
    {100, 30, 5, "의원", "의원", hospital, 10},
    {100, 40, 1, "노인복지관", "노인복지관", other, 30},
    {100, 40, 2, "어린이집", "어린이집", other, 40},
    {100, 40, 3, "장애인복지관", "장애인복지관", other, 15},
    {100, 40, 4, "종합사회복지관", "종합사회복지관", other, 15},
    {100, 50, 1, "보건소", "보건소", health_centre, 35},
    {100, 50, 2, "보건지소", "보건지소", health_centre, 10},
    {200, 60, 1, "식품연구소", "식품연구소", business, 15},
    {200, 60, 2, "식품회사", "식품(주)", business, 30},
    {200, 60, 3, "외식업체", "외식(주)", business, 20},
    {200, 60, 4, "출판사", "출판사", other, 5},
    {200, 60, 5, "교수", "대학교 식품영양학과", other, 20},
});

struct named_code {
    std::string_view table;
    int step;
    std::vector<std::string_view> names;
};

const std::vector<named_code>& simple_tables()
{
    static const std::vector<named_code> tables{
        {"private_tbl", 1, {"질병", "출산", "출장", "경조사", "근무처 사정", "기타"}},
        {"instrument",
         1,
         {"본회", "지부", "한빛교육원", "가온대학교 평생교육원", "새날임상영양연구원", "누리위생교육센터"}},
        {"job_level", 10, {"영양사", "주임", "대리", "과장", "차장", "부장", "영양교사", "교수", "대표"}},
        {"job_line", 10, {"영양직", "식품위생직", "보건직", "교육직", "일반직", "기능직", "연구직"}},
        {"make_use_of", 1, {"직영", "위탁", "임대", "공동운영"}},
        {"receipt_place", 1, {"본회", "지회", "은행", "지로", "신용카드"}},
        {"religion", 10, {"무교", "기독교", "천주교", "불교", "원불교", "기타"}},
        {"scholarship", 10, {"고졸", "전문대졸", "대졸", "대학원졸"}},
        {"univer_degree", 10, {"전문학사", "학사", "석사", "박사"}},
        {"class_tbl", 1, {"급식경영", "임상영양", "식품위생", "영양교육", "조리과학", "보수교육"}},
        {"sub_element",
         10,
         {"영양교사회", "병원분야회", "산업체분야회", "보건소분야회", "상담영양분야회", "해당없음"}},
        {"school", 10, {"가온대학교",     "누리대학교",   "늘봄여자대학교", "다솜대학교", "도담대학",
                        "두레대학교",     "라온대학교",   "마루대학",       "미르대학교", "별마루대학교",
                        "보람여자대학교", "새날대학교",   "솔향대학",       "아라대학교", "여울대학교",
                        "온새미대학교",   "윤슬대학교",   "은하여자대학교", "이든대학",   "참빛대학교",
                        "초록뜰대학",     "큰나래대학교", "푸른솔대학교",   "한빛대학교", "해오름대학교"}},
    };
    return tables;
}

int rows_of(std::string_view table)
{
    for (const named_code& each : simple_tables())
        if (each.table == table)
            return static_cast<int>(each.names.size());
    return 0;
}

/// A list of records as the rows of a table.
template <typename List, typename Write>
void fill_from(loader& into, std::string_view table, const List& list, const Write& write)
{
    auto at = std::begin(list);
    into.fill(table, [&](row& next) {
        if (at == std::end(list))
            return false;
        write(next, *at++);
        return true;
    });
}

struct section {
    int branch;
    int division;
    int code;
    std::string name;
};

constexpr std::array divisions = std::to_array<std::pair<int, std::string_view>>({{other, "기타"},
                                                                                  {business, "사업체"},
                                                                                  {hospital, "병원"},
                                                                                  {school_division, "학교"},
                                                                                  {health_centre, "보건소"}});

std::vector<section> sections()
{
    std::vector<section> all;
    int number = 0;
    for (const branch& where : all_branches)
        for (const auto& [division, name] : divisions)
            for (int code = 1; code <= section_count(where.code, division); ++code)
                all.push_back({where.code, division, code, std::string{district_name(number++)} + "분회"});
    return all;
}

struct great_class {
    int part;
    int code;
    std::string_view name;
};

constexpr std::array great_classes = std::to_array<great_class>({{100, 10, "사업체"},
                                                                 {100, 20, "학교"},
                                                                 {100, 30, "병원"},
                                                                 {100, 40, "사회복지시설"},
                                                                 {100, 50, "보건소"},
                                                                 {200, 60, "교육연구기타"}});

void fill_contractors(loader& into, quint64 seed)
{
    random_stream random{seed, "contractors"};
    int code = 0;
    into.fill("deposit", [&](row& next) {
        if (code == contractors())
            return false;
        ++code;
        const branch& where = random.pick(all_branches);
        const address stands = work_address(random, where.code);
        const std::string tel = line_number(random, stands.area);
        std::string name{house_name(random)};
        name += std::string{"급식"} + (code % 2 == 0 ? "시스템" : "산업") + std::to_string(code) + "호점";
        next << code << name << stands.text << tel;
        return true;
    });
}

} // namespace

const member_kind& kind_of(int code)
{
    return kinds[static_cast<std::size_t>(code)];
}

std::span<const branch> branches()
{
    return all_branches;
}

std::span<const workplace_class> workplace_classes()
{
    return classes;
}

int section_count(int where, int division)
{
    if (where == 0) // the head office keeps a few of its own, and none for hospitals and health centres
        return division == hospital || division == health_centre ? 0 : 1;
    if (division == health_centre)
        return 1;
    return where == 10 || where == 40 ? 6 : 3;
}

int schools()
{
    return rows_of("school");
}

int contractors()
{
    return 12;
}

void fill_codes(loader& into, quint64 seed)
{
    fill_from(into, "branch_code", all_branches,
              [](row& next, const branch& each) { next << each.code << each.name; });
    fill_from(into, "big_division", divisions,
              [](row& next, const auto& each) { next << each.first << each.second; });
    fill_from(into, "section_code", sections(), [](row& next, const section& each) {
        next << each.branch << each.division << each.code << each.name;
    });
    fill_from(into, "great_division", great_classes,
              [](row& next, const great_class& each) { next << each.part << each.code << each.name; });
    fill_from(into, "small_division", classes, [](row& next, const workplace_class& each) {
        next << each.part << each.great << each.small << each.name;
    });
    for (const named_code& each : simple_tables()) {
        int code = 0;
        fill_from(into, each.table, each.names,
                  [&](row& next, std::string_view name) { next << (code += each.step) << name; });
    }
    fill_contractors(into, seed);
    fill_from(into, "money_member", kinds, [](row& next, const member_kind& each) {
        next << each.code << each.name << each.dues() << each.center_money << each.bran_money;
    });
}

} // namespace orvo::demo
