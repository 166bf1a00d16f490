#pragma once

#include <array>
#include <string_view>

namespace lineweir::practice {

// What a caller says when he is answered. A screener types it in; nobody else tells it.
inline constexpr auto show_callers = std::to_array<std::string_view>({
    "Anna Berg from Norwich. The buses don't meet the trains.",
    "Tom Hale here, from Leeds. I like the new market.",
    "This is Priya Nair in Derby, about school meals.",
    "Colin Marsh, Hull. They should mend the harbour road.",
    "Ruth Adler from York. I have lost a grey cat.",
    "Femi Okoro, in Luton. Night flights keep us awake.",
    "It's Joan Pike from Bath, about the library's hours.",
    "Sam Whitlow, Exeter. The river path floods each spring.",
    "My name is Ines Duarte, from Poole. Beaches need bins.",
    "Greg Tunstall in Stoke. Bring the trams back!",
    "Mei Lin Foster, Reading. Rents are beyond us.",
    "Alan Drury from Perth, about wind and heating bills.",
    "Hello, Carla Voss in Wells. The choir wants tenors.",
    "Niall Brady, from Bangor. Ferries are late again.",
    "Dot Harker here, Whitby. Gulls took my lunch.",
    "Yusuf Demir in Dover. Lorries park in our street.",
    "Ellen Strand, Kendal. Leave the hedges alone.",
    "I'm Pete Rowntree, from Crewe, a train driver.",
    "Bea Lockwood in Truro, about young people leaving.",
    "Viktor Hanak, Swindon. I agree with nobody so far.",
    "Moira Kane from Ayr. Golf is killing our dunes.",
    "Dev Raman in Slough, about charging points.",
    "Olive Trent, Ludlow. I am ninety and I cycle.",
    "Hugh Pallister from Ripon, a farmer, about milk.",
});

inline constexpr auto wrong_numbers = std::to_array<std::string_view>({
    "Is that the pizza service? One large, please.",
    "I'd like a taxi to the station.",
    "Hello, the dentist's? My tooth has come back.",
    "Is Margaret there?",
    "I'm calling about the washing machine.",
    "Is this the garage? Is my car ready?",
});

}  // namespace lineweir::practice
