#include "clock/zones.h"

#include "core/local_second.h"

#include <cmath>
#include <iterator>

namespace quorvane {
namespace {

constexpr std::string_view Places[] = {
    "Eniwetok, Kwajalein",
    "Midway Island, Samoa",
    "Hawaii",
    "Alaska",
    "Pacific Time (US & Canada), Tijuana",
    "Arizona, Mountain Time (US & Canada)",
    "Central America, Central Time (US & Canada), Mexico City, Saskatchewan",
    "Bogota, Lima Quito, Eastern Time (US & Canada), Indiana (East)",
    "-3.30:Newfoundland, Atlantic Time (Canada), Caracas, La Paz, Santiago",
    "Brasilia, Buenos Aires, Georgetown, Greenland",
    "Mid-Athlantic.",
    "Azores, Cape Verde Is.",
    "Dublin, Edinburg, Lisbon, London, Casablanca, Monrovia",
    "Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna, Belgrade, Bratislava, Budapest, Ljubljana, Prague, "
    "Brussels, Copenhagen, Madrid, Paris, Sarajevo, Skopje, Sofija, Vilnius, Warsaw, Zagreb, West Central "
    "Africa",
    "Athens, Istanbul, Minsk, Bucharest, Cairo, Harare, Pretoria, Helsinki, Riga, Tallinn, Jerusalem",
    "Baghdad, Kuwait, Riyadh, Moscow, St. Petersburg, Volgograd, Tula, Nairobi, Tehran",
    "Abu Dhabi, Muscat, Baku, Tbilisi, Yerevan",
    "Ekaterinburg, Islamabad, Karachi, Tashkent. 5.30:Calcutta, Chennai, Mumbai, New Delhi. 5.45:Kathmandu",
    "Almaty, Novosibirsk, Astana, Dhaka, Sri Jayawardenepura. 6.30:Rangoon",
    "Bangkok, Hanoi, Jakarta, Krasnoyarsk",
    "Beijing, Chongqing, Hong Kong, Urumqi, Irkutsk, Ulaan Bataar, Kuala Lumpur, Singapore, Perth, Taipei",
    "Osaka, Sapporo, Tokyo, Seonl, Yakutsk. 9.30: Adelaide, Darwin",
    "Brisbane, Canberra, Melbourne, Sydney, Guam, Port Moresby, Hobart, Vladivostok",
    "Magadan, Slomon Is., New Caledonia",
    "Auckland, Wellington, Fiji, Kamchatka, Marshall Is.",
    "Nuku'alofa",
};
static_assert(std::size(Places) == LastZone - FirstZone + 1);

} // namespace

std::string_view ZonePlaces(int offset) {
    if (offset < FirstZone || offset > LastZone) return {};
    return Places[offset - FirstZone];
}

DateTime ZoneMoment(const DateTime& local, double biasMinutes, int offset) {
    return DateTimeOf(LocalSecondOf(local) + std::llround(biasMinutes * 60) + LocalSecond{offset} * 3600);
}

} // namespace quorvane
