#pragma once
#include <QString>

/// A C file of about @p size characters: functions with comments, strings, numbers and keywords.
inline QString sampleSource(qsizetype size)
{
    const QString function = QStringLiteral("/*\n"
                                            " * Reads channel %1 of the converter and filters its value.\n"
                                            " */\n"
                                            "static int read_channel_%1(struct adc *adc, unsigned int flags)\n"
                                            "{\n"
                                            "    uint32_t value = adc->regs[0x%1] & 0xffff; // raw\n"
                                            "    int i, sum = %1;\n"
                                            "\n"
                                            "    if (flags & ADC_TRACE)\n"
                                            "        printf(\"channel %d: \\\"%08x\\\"\\n\", %1, value);\n"
                                            "    for (i = 0; i < ADC_SAMPLES; i++) {\n"
                                            "        if (adc->ready[i] == 'y')\n"
                                            "            sum += filter(adc, value, i);\n"
                                            "        else\n"
                                            "            return -1;\n"
                                            "    }\n"
                                            "#ifdef ADC_AVERAGE\n"
                                            "    sum /= ADC_SAMPLES;\n"
                                            "#endif\n"
                                            "    return sum;\n"
                                            "}\n"
                                            "\n");
    QString text;
    text.reserve(size);
    for (int number = 1; text.size() + function.size() < size; ++number)
        text += QString(function).replace(QStringLiteral("%1"), QString::number(number));
    return text;
}
