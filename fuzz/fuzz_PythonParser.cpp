#include "ParserChecks.h"
#include "language/PythonParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static PythonParser parser; // reused, as an editor group reuses its parser
    const QString text = FuzzText(data, size);
    parser.Parse(text, QStringLiteral("fuzz.py"));
    CheckParser(parser, text);
    // At most one bracket fault and one indentation fault per run, plus unterminated strings.
    int indentErrors = 0;
    for (const ParserMessage& error : parser.GetErrors())
        indentErrors += error.text.contains(QLatin1String("indent")) ? 1 : 0;
    FUZZ_CHECK(indentErrors <= 1);
    FUZZ_CHECK(parser.GetWarnings().size() <= 1);
    return 0;
}
