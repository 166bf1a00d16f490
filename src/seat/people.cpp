#include "seat/people.h"

namespace lineweir::seat {
namespace {

constexpr CallerStory stories[] = {
    {"Margaret Ellison", "Leeds", "Ferry delays: was on the 6:10 boat and on the one after it"},
    {"Dev Patel", "Hull", "Disagrees with the minister, angry but polite"},
    {"Ann Kowalczyk", "York", "First-time caller, nervous; her street floods each spring"},
    {"Tom Birch", "Selby", "Lorry driver: the bridge has been closed for three weeks"},
    {"Sheila Grant", "Goole", "Was cut off last week and would like to finish"},
    {"Jamal Osei", "Bradford", "Teacher: what the timetable does to the pupils"},
    {"Ruth Lindqvist", "Whitby", "Remembers the ferry strike of 1974"},
    {"Colm Doyle", "Ripon", "Has a question for the guest about fares"},
    {"Ivy Chen", "Sheffield", "Commutes by two buses, has counted the days"},
    {"Peter Falk", "Malton", "Regular; keep it short"},
    {"Nadia Rahman", "Halifax", "Works nights at the port, saw it happen"},
    {"George Whitfield", "Thirsk", "Councillor, wants to answer the last caller"},
    {"Lucy Marsh", "Filey", "Runs a guest house: bookings have halved"},
    {"Owen Pryce", "Skipton", "Funny story about the rescue dog"},
    {"Hanna Weiss", "Harrogate", "Thinks that nobody has asked the islanders"},
    {"Bill Tranter", "Barnsley", "Retired pilot: why fog is not the reason"},
};

constexpr std::string_view messages[] = {
    "Next one is angry but polite", "Line is bad, keep it short",
    "Two minutes to the news",      "A first-time caller is coming, be gentle",
    "Good show, the board is full", "The minister's office has called back",
};

}  // namespace

std::span<const CallerStory> caller_stories() { return stories; }
std::span<const std::string_view> screener_messages() { return messages; }

}  // namespace lineweir::seat
