"""An example of a docked panel: why a Cortex-M processor has entered a fault handler.

To try it, enter "import faultpanel" in the Command Window, and press Refresh while the program is paused in the handler.
The panel is in faultpanel.ui. It reads the fault status registers and the registers that the processor has put on the
stack.
"""

import html

from panels import number, paused_processor, show, table
from varnel import app
from varneltexts import tr

CFSR, HFSR, MMFAR, BFAR = 0xE000ED28, 0xE000ED2C, 0xE000ED34, 0xE000ED38
MMFAR_VALID, BFAR_VALID = 1 << 7, 1 << 15

CFSR_BITS = {
    0: tr("The processor fetched an instruction from a protected address (IACCVIOL)."),
    1: tr("The program read or wrote a protected address (DACCVIOL)."),
    3: tr("A protected address was used on return from an exception (MUNSTKERR)."),
    4: tr("The stack is at a protected address on entry to an exception; it may have overflowed (MSTKERR)."),
    5: tr("A protected address was used while floating-point registers were saved (MLSPERR)."),
    8: tr("There is no memory at the address of an instruction (IBUSERR)."),
    9: tr("There is no memory at an address that the program read or wrote (PRECISERR)."),
    10: tr("A write failed some instructions before; the location is not exact (IMPRECISERR)."),
    11: tr("The stack is outside memory on return from an exception (UNSTKERR)."),
    12: tr("The stack is outside memory on entry to an exception; it may have overflowed (STKERR)."),
    13: tr("Floating-point registers could not be saved (LSPERR)."),
    16: tr("The processor does not know the instruction (UNDEFINSTR)."),
    17: tr("An address to which the program jumped has bit 0 clear, which is no Thumb code (INVSTATE)."),
    18: tr("The value in the link register is none for a return from an exception (INVPC)."),
    19: tr("The coprocessor or floating-point unit is absent or switched off (NOCP)."),
    20: tr("The stack limit was passed (STKOF)."),
    24: tr("An address of a word or half-word is not aligned (UNALIGNED)."),
    25: tr("The program divided by zero (DIVBYZERO)."),
}
HFSR_BITS = {
    1: tr("The vector of an exception could not be read (VECTTBL)."),
    30: tr("Another fault has become a hard fault, because its handler is off or cannot interrupt (FORCED)."),
    31: tr("A breakpoint instruction was executed without a debugger (DEBUGEVT)."),
}
STACKED = ("r0", "r1", "r2", "r3", "r12", "lr", "pc", "psr")


def word(processor, address):
    return number(processor, "*(unsigned int *)0x%x" % address) & 0xFFFFFFFF


def reasons(cfsr, hfsr):
    return ([words for bit, words in HFSR_BITS.items() if hfsr >> bit & 1]
            + [words for bit, words in CFSR_BITS.items() if cfsr >> bit & 1])


def paragraph(text):
    return "<p>%s</p>" % html.escape(text)


def is_return_value(value):
    """Whether a link register holds it in an exception handler."""
    return value >= 0xFFFFFFE0 and value & 3 == 1


def stack_of(processor):
    """The address of the registers that the processor has put on the stack; None outside an exception handler.

    A handler that calls functions has pushed the value for its return, behind which those registers lie.
    """
    handler = number(processor, "(unsigned int)$sp") & 0xFFFFFFFF  # in a handler the main stack
    pushed = [word(processor, handler + 4 * i) for i in range(12)]
    place = next((i for i, value in enumerate(pushed) if is_return_value(value)), None)
    value = number(processor, "(unsigned int)$lr") & 0xFFFFFFFF if place is None else pushed[place]
    if not is_return_value(value):
        return None
    if value & 4:
        return number(processor, "(unsigned int)$psp") & 0xFFFFFFFF
    return handler if place is None else handler + 4 * place + 4


class FaultPanel:
    def __init__(self):
        self.panel = app.loadUI("faultpanel.ui")
        self.panel.refreshButton.onClicked = lambda button: self.refresh()
        app.dockUI(self.panel, 1)
        self.refresh()

    def refresh(self):
        show(self.panel, self.panel.reportView, self.report)

    def report(self):
        processor = paused_processor()
        cfsr, hfsr = word(processor, CFSR), word(processor, HFSR)
        found = reasons(cfsr, hfsr)
        if not found:
            return paragraph(tr("There is no fault."))
        if cfsr & MMFAR_VALID:
            found.append(tr("The protected address is {}.").format("0x%08x" % word(processor, MMFAR)))
        if cfsr & BFAR_VALID:
            found.append(tr("The address is {}.").format("0x%08x" % word(processor, BFAR)))
        lines = ["<li>%s</li>" % html.escape(each) for each in found]
        return "<ul>" + "".join(lines) + "</ul>" + self.place(processor)

    def place(self, processor):
        stack = stack_of(processor)
        if stack is None:
            return paragraph(tr("To see where it happened, pause at the first instruction of the handler."))
        values = {name: word(processor, stack + 4 * i) for i, name in enumerate(STACKED)}
        try:
            where = "%s, %d" % processor.getSourceLines(values["pc"])[0]
        except (ValueError, IndexError):
            where = "0x%08x" % values["pc"]
        rows = [[name, "0x%08x" % value] for name, value in values.items()]
        return paragraph(tr("It happened at {}.").format(where)) + table([tr("Register"), tr("Value")], rows)


faultPanel = FaultPanel()
