#pragma once

#include <string_view>

namespace lineweir {

// The letters as they are compared: small and without accents. A "." stands for one that stays as
// it is.

// U+00C0 to U+024F.
inline constexpr std::u16string_view folded_latin =
    u"aaaaaaæceeeeiiii"   // 00C0
    u"ðnooooo.ouuuuyþß"   // 00D0
    u"aaaaaaæceeeeiiii"   // 00E0
    u"ðnooooo.ouuuuyþy"   // 00F0
    u"aaaaaaccccccccdd"   // 0100
    u"ddeeeeeeeeeegggg"   // 0110
    u"gggghhhhiiiiiiii"   // 0120
    u"iiĳĳjjkkĸlllllll"   // 0130
    u"lllnnnnnnnŋŋoooo"   // 0140
    u"ooœœrrrrrrssssss"   // 0150
    u"ssttttttuuuuuuuu"   // 0160
    u"uuuuwwyyyzzzzzzs"   // 0170
    u"bɓƃƃƅƅɔƈƈɖɗƌƌƍǝə"   // 0180
    u"ɛƒƒɠɣƕɩiƙƙlƛɯɲƞɵ"   // 0190
    u"ooƣƣƥƥʀƨƨʃƪƫƭƭʈu"   // 01A0
    u"uʊʋƴƴzzʒƹƹƺƻƽƽƾƿ"   // 01B0
    u"ǀǁǂǃǆǆǆǉǉǉǌǌǌaai"   // 01C0
    u"ioouuuuuuuuuuǝaa"   // 01D0
    u"aaææggggkkooooʒʒ"   // 01E0
    u"jǳǳǳggƕƿnnaaææoo"   // 01F0
    u"aaaaeeeeiiiioooo"   // 0200
    u"rrrruuuussttȝȝhh"   // 0210
    u"ƞȡȣȣȥȥaaeeoooooo"   // 0220
    u"ooyyȴȵȶȷȸȹaccltȿ"   // 0230
    u"ɀɂɂbʉʌeejjɋɋrryy";  // 0240

// U+0370 to U+03FF.
inline constexpr std::u16string_view folded_greek =
    u"ͱͱͳͳʹ.ͷͷ..ͺͻͼͽ.ϳ"   // 0370
    u"......α.εηι.ο.υω"   // 0380
    u"ιαβγδεζηθικλμνξο"   // 0390
    u"πρ.στυφχψωιυαεηι"   // 03A0
    u"υαβγδεζηθικλμνξο"   // 03B0
    u"πρσστυφχψωιυουωϗ"   // 03C0
    u"ϐϑϒϒϒϕϖϗϙϙϛϛϝϝϟϟ"   // 03D0
    u"ϡϡϣϣϥϥϧϧϩϩϫϫϭϭϯϯ"   // 03E0
    u"ϰϱϲϳθϵ.ϸϸϲϻϻϼͻͼͽ";  // 03F0

// U+0400 to U+052F. What looks like an accent mostly makes another letter of it.
inline constexpr std::u16string_view folded_cyrillic =
    u"ееђѓєѕіїјљњћќиўџ"                   // 0400
    u"абвгдежзийклмноп"                   // 0410
    u"рстуфхцчшщъыьэюя"                   // 0420
    u"абвгдежзийклмноп"                   // 0430
    u"рстуфхцчшщъыьэюя"                   // 0440
    u"ееђѓєѕіїјљњћќиўџ"                   // 0450
    u"ѡѡѣѣѥѥѧѧѩѩѫѫѭѭѯѯ"                   // 0460
    u"ѱѱѳѳѵѵѷѷѹѹѻѻѽѽѿѿ"                   // 0470
    u"ҁҁ........ҋҋҍҍҏҏ"                   // 0480
    u"ґґғғҕҕҗҗҙҙққҝҝҟҟ"                   // 0490
    u"ҡҡңңҥҥҧҧҩҩҫҫҭҭүү"                   // 04A0
    u"ұұҳҳҵҵҷҷҹҹһһҽҽҿҿ"                   // 04B0
    u"ӏӂӂӄӄӆӆӈӈӊӊӌӌӎӎӏ"                   // 04C0
    u"ӑӑӓӓӕӕӗӗәәӛӛӝӝӟӟ"                   // 04D0
    u"ӡӡӣӣӥӥӧӧөөӫӫӭӭӯӯ"                   // 04E0
    u"ӱӱӳӳӵӵӷӷӹӹӻӻӽӽӿӿ"                   // 04F0
    u"ԁԁԃԃԅԅԇԇԉԉԋԋԍԍԏԏ"                   // 0500
    u"ԑԑԓԓԕԕԗԗԙԙԛԛԝԝԟԟ"                   // 0510
    u"ԡԡԣԣԥԥԧԧԩԩԫԫԭԭԯԯ";  // 0520

// U+1E00 to U+1FFF.
inline constexpr std::u16string_view folded_rarer =
    u"aabbbbbbccdddddd"   // 1E00
    u"ddddeeeeeeeeeeff"   // 1E10
    u"gghhhhhhhhhhiiii"   // 1E20
    u"kkkkkkllllllllmm"   // 1E30
    u"mmmmnnnnnnnnoooo"   // 1E40
    u"oooopppprrrrrrrr"   // 1E50
    u"sssssssssstttttt"   // 1E60
    u"ttuuuuuuuuuuvvvv"   // 1E70
    u"wwwwwwwwwwxxxxyy"   // 1E80
    u"zzzzzzhtwyas..ß."   // 1E90
    u"aaaaaaaaaaaaaaaa"   // 1EA0
    u"aaaaaaaaeeeeeeee"   // 1EB0
    u"eeeeeeeeiiiioooo"   // 1EC0
    u"oooooooooooooooo"   // 1ED0
    u"oooouuuuuuuuuuuu"   // 1EE0
    u"uuyyyyyyyyỻ.ỽ.ỿ."   // 1EF0
    u"αααααααααααααααα"   // 1F00
    u"εεεεεε..εεεεεε.."   // 1F10
    u"ηηηηηηηηηηηηηηηη"   // 1F20
    u"ιιιιιιιιιιιιιιιι"   // 1F30
    u"οοοοοο..οοοοοο.."   // 1F40
    u"υυυυυυυυ.υ.υ.υ.υ"   // 1F50
    u"ωωωωωωωωωωωωωωωω"   // 1F60
    u"ααεεηηιιοουυωω.."   // 1F70
    u"αααααααααααααααα"   // 1F80
    u"ηηηηηηηηηηηηηηηη"   // 1F90
    u"ωωωωωωωωωωωωωωωω"   // 1FA0
    u"ααααα.ααααααα.ι."   // 1FB0
    u"..ηηη.ηηεεηηη..."   // 1FC0
    u"ιιιι..ιιιιιι...."   // 1FD0
    u"υυυυρρυυυυυυρ..."   // 1FE0
    u"..ωωω.ωωοοωωω...";  // 1FF0

}  // namespace lineweir
