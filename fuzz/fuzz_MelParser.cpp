#include "ParserChecks.h"
#include "language/MelParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static MelParser parser; // reused, as an editor group reuses its parser
    const QString text = FuzzText(data, size);
    parser.Parse(text, QStringLiteral("fuzz.mel"));
    CheckParser(parser, text);
    FUZZ_CHECK(parser.GetErrors().isEmpty());
    return 0;
}
