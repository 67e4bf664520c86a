#pragma once

#include <array>
#include <string_view>

/// A named character reference, without its ampersand and semicolon.
struct HTMLEntity {
    char16_t code;
    std::u16string_view name;
};

/// The references of HTML 4.01 and "apos", sorted by code.
// clang-format off
inline constexpr std::array<HTMLEntity, 253> entityTable {{
    {34, u"quot"}, {38, u"amp"}, {39, u"apos"}, {60, u"lt"}, {62, u"gt"}, {160, u"nbsp"}, {161, u"iexcl"},
    {162, u"cent"}, {163, u"pound"}, {164, u"curren"}, {165, u"yen"}, {166, u"brvbar"}, {167, u"sect"}, {168, u"uml"},
    {169, u"copy"}, {170, u"ordf"}, {171, u"laquo"}, {172, u"not"}, {173, u"shy"}, {174, u"reg"}, {175, u"macr"},
    {176, u"deg"}, {177, u"plusmn"}, {178, u"sup2"}, {179, u"sup3"}, {180, u"acute"}, {181, u"micro"}, {182, u"para"},
    {183, u"middot"}, {184, u"cedil"}, {185, u"sup1"}, {186, u"ordm"}, {187, u"raquo"}, {188, u"frac14"},
    {189, u"frac12"}, {190, u"frac34"}, {191, u"iquest"}, {192, u"Agrave"}, {193, u"Aacute"}, {194, u"Acirc"},
    {195, u"Atilde"}, {196, u"Auml"}, {197, u"Aring"}, {198, u"AElig"}, {199, u"Ccedil"}, {200, u"Egrave"},
    {201, u"Eacute"}, {202, u"Ecirc"}, {203, u"Euml"}, {204, u"Igrave"}, {205, u"Iacute"}, {206, u"Icirc"},
    {207, u"Iuml"}, {208, u"ETH"}, {209, u"Ntilde"}, {210, u"Ograve"}, {211, u"Oacute"}, {212, u"Ocirc"},
    {213, u"Otilde"}, {214, u"Ouml"}, {215, u"times"}, {216, u"Oslash"}, {217, u"Ugrave"}, {218, u"Uacute"},
    {219, u"Ucirc"}, {220, u"Uuml"}, {221, u"Yacute"}, {222, u"THORN"}, {223, u"szlig"}, {224, u"agrave"},
    {225, u"aacute"}, {226, u"acirc"}, {227, u"atilde"}, {228, u"auml"}, {229, u"aring"}, {230, u"aelig"},
    {231, u"ccedil"}, {232, u"egrave"}, {233, u"eacute"}, {234, u"ecirc"}, {235, u"euml"}, {236, u"igrave"},
    {237, u"iacute"}, {238, u"icirc"}, {239, u"iuml"}, {240, u"eth"}, {241, u"ntilde"}, {242, u"ograve"},
    {243, u"oacute"}, {244, u"ocirc"}, {245, u"otilde"}, {246, u"ouml"}, {247, u"divide"}, {248, u"oslash"},
    {249, u"ugrave"}, {250, u"uacute"}, {251, u"ucirc"}, {252, u"uuml"}, {253, u"yacute"}, {254, u"thorn"},
    {255, u"yuml"}, {338, u"OElig"}, {339, u"oelig"}, {352, u"Scaron"}, {353, u"scaron"}, {376, u"Yuml"},
    {402, u"fnof"}, {710, u"circ"}, {732, u"tilde"}, {913, u"Alpha"}, {914, u"Beta"}, {915, u"Gamma"},
    {916, u"Delta"}, {917, u"Epsilon"}, {918, u"Zeta"}, {919, u"Eta"}, {920, u"Theta"}, {921, u"Iota"},
    {922, u"Kappa"}, {923, u"Lambda"}, {924, u"Mu"}, {925, u"Nu"}, {926, u"Xi"}, {927, u"Omicron"}, {928, u"Pi"},
    {929, u"Rho"}, {931, u"Sigma"}, {932, u"Tau"}, {933, u"Upsilon"}, {934, u"Phi"}, {935, u"Chi"}, {936, u"Psi"},
    {937, u"Omega"}, {945, u"alpha"}, {946, u"beta"}, {947, u"gamma"}, {948, u"delta"}, {949, u"epsilon"},
    {950, u"zeta"}, {951, u"eta"}, {952, u"theta"}, {953, u"iota"}, {954, u"kappa"}, {955, u"lambda"}, {956, u"mu"},
    {957, u"nu"}, {958, u"xi"}, {959, u"omicron"}, {960, u"pi"}, {961, u"rho"}, {962, u"sigmaf"}, {963, u"sigma"},
    {964, u"tau"}, {965, u"upsilon"}, {966, u"phi"}, {967, u"chi"}, {968, u"psi"}, {969, u"omega"},
    {977, u"thetasym"}, {978, u"upsih"}, {982, u"piv"}, {8194, u"ensp"}, {8195, u"emsp"}, {8201, u"thinsp"},
    {8204, u"zwnj"}, {8205, u"zwj"}, {8206, u"lrm"}, {8207, u"rlm"}, {8211, u"ndash"}, {8212, u"mdash"},
    {8216, u"lsquo"}, {8217, u"rsquo"}, {8218, u"sbquo"}, {8220, u"ldquo"}, {8221, u"rdquo"}, {8222, u"bdquo"},
    {8224, u"dagger"}, {8225, u"Dagger"}, {8226, u"bull"}, {8230, u"hellip"}, {8240, u"permil"}, {8242, u"prime"},
    {8243, u"Prime"}, {8249, u"lsaquo"}, {8250, u"rsaquo"}, {8254, u"oline"}, {8260, u"frasl"}, {8364, u"euro"},
    {8465, u"image"}, {8472, u"weierp"}, {8476, u"real"}, {8482, u"trade"}, {8501, u"alefsym"}, {8592, u"larr"},
    {8593, u"uarr"}, {8594, u"rarr"}, {8595, u"darr"}, {8596, u"harr"}, {8629, u"crarr"}, {8656, u"lArr"},
    {8657, u"uArr"}, {8658, u"rArr"}, {8659, u"dArr"}, {8660, u"hArr"}, {8704, u"forall"}, {8706, u"part"},
    {8707, u"exist"}, {8709, u"empty"}, {8711, u"nabla"}, {8712, u"isin"}, {8713, u"notin"}, {8715, u"ni"},
    {8719, u"prod"}, {8721, u"sum"}, {8722, u"minus"}, {8727, u"lowast"}, {8730, u"radic"}, {8733, u"prop"},
    {8734, u"infin"}, {8736, u"ang"}, {8743, u"and"}, {8744, u"or"}, {8745, u"cap"}, {8746, u"cup"}, {8747, u"int"},
    {8756, u"there4"}, {8764, u"sim"}, {8773, u"cong"}, {8776, u"asymp"}, {8800, u"ne"}, {8801, u"equiv"},
    {8804, u"le"}, {8805, u"ge"}, {8834, u"sub"}, {8835, u"sup"}, {8836, u"nsub"}, {8838, u"sube"}, {8839, u"supe"},
    {8853, u"oplus"}, {8855, u"otimes"}, {8869, u"perp"}, {8901, u"sdot"}, {8968, u"lceil"}, {8969, u"rceil"},
    {8970, u"lfloor"}, {8971, u"rfloor"}, {9001, u"lang"}, {9002, u"rang"}, {9674, u"loz"}, {9824, u"spades"},
    {9827, u"clubs"}, {9829, u"hearts"}, {9830, u"diams"},
}};
// clang-format on
