<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutBox</name>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>No plug-ins are installed</source>
        <translation>Keine Plug-ins installiert</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>About Varnel</source>
        <translation>Über Varnel</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Plug-ins:</source>
        <translation>Plug-ins:</translation>
    </message>
    <message>
        <source>Running on Qt %1 with Python %2</source>
        <translation>Läuft mit Qt %1 und Python %2</translation>
    </message>
    <message>
        <source>Copyright © The Varnel authors. Free software under the MIT licence.</source>
        <translation>Copyright © Die Autoren von Varnel. Freie Software unter der MIT-Lizenz.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>AccessibleViews</name>
    <message>
        <source>several breakpoints</source>
        <translation>mehrere Haltepunkte</translation>
    </message>
    <message>
        <source>breakpoint</source>
        <translation>Haltepunkt</translation>
    </message>
    <message>
        <source>disabled breakpoint</source>
        <translation>deaktivierter Haltepunkt</translation>
    </message>
    <message>
        <source>next statement</source>
        <translation>nächste Anweisung</translation>
    </message>
    <message>
        <source>found line</source>
        <translation>gefundene Zeile</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>calling function</source>
        <translation>aufrufende Funktion</translation>
    </message>
</context>
<context>
    <name>BatchBuildDialogBase</name>
    <message>
        <source>Batch Build</source>
        <translation>Stapelerstellung</translation>
    </message>
    <message>
        <source>Configurations:</source>
        <translation>Konfigurationen:</translation>
    </message>
    <message>
        <source>Configurations</source>
        <translation>Konfigurationen</translation>
    </message>
    <message>
        <source>&amp;Build</source>
        <translation>&amp;Erstellen</translation>
    </message>
    <message>
        <source>&amp;Rebuild</source>
        <translation>&amp;Neu erstellen</translation>
    </message>
    <message>
        <source>C&amp;lean</source>
        <translation>&amp;Bereinigen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Branding</name>
    <message>
        <source>Embedded development environment</source>
        <translation>Entwicklungsumgebung für eingebettete Systeme</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>BreakpointDialog</name>
    <message>
        <source>Breakpoint</source>
        <translation>Haltepunkt</translation>
    </message>
    <message>
        <source>Add new breakpoint here</source>
        <translation>Hier neuen Haltepunkt eingeben</translation>
    </message>
    <message>
        <source>The breakpoint syntax is not valid. Specify breakpoints as:

[file], [line] OR
disassembler, 0x[addr]</source>
        <translation>Die Angabe des Haltepunkts ist ungültig. Geben Sie Haltepunkte so an:

[Datei], [Zeile] ODER
disassembler, 0x[Adresse]</translation>
    </message>
    <message>
        <source>The breakpoint could not be set.</source>
        <translation>Der Haltepunkt konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Breakpoints cannot be set in file:

&apos;%1&apos;.</source>
        <translation>In dieser Datei können keine Haltepunkte gesetzt werden:

&apos;%1&apos;.</translation>
    </message>
    <message>
        <source>The file you have specified is included in more than one project.

%1

The breakpoint will be set in the currently active project (%2)</source>
        <translation>Die angegebene Datei gehört zu mehreren Projekten.

%1

Der Haltepunkt wird im derzeit aktiven Projekt gesetzt (%2)</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a function with source lines. Its address is 0x%2.</source>
        <translation>&apos;%1&apos; ist keine Funktion mit Quellzeilen. Die Adresse ist 0x%2.</translation>
    </message>
    <message>
        <source>The function &apos;%1&apos; is not known.

Functions are found in the program of a debug session. Before one, specify breakpoints as [file], [line].</source>
        <translation>Die Funktion &apos;%1&apos; ist nicht bekannt.

Funktionen werden im Programm einer Debug-Sitzung gefunden. Geben Sie Haltepunkte davor als [Datei], [Zeile] an.</translation>
    </message>
</context>
<context>
    <name>BreakpointDialogBase</name>
    <message>
        <source>Breakpoints</source>
        <translation>Haltepunkte</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>Breakpoints:</source>
        <translation>Haltepunkte:</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Alle löschen</translation>
    </message>
</context>
<context>
    <name>BreakpointList</name>
    <message>
        <source>the program cannot be paused</source>
        <translation>das Programm kann nicht angehalten werden</translation>
    </message>
    <message>
        <source>No breakpoint can be set at %1: %2
</source>
        <translation>Bei %1 kann kein Haltepunkt gesetzt werden: %2
</translation>
    </message>
    <message>
        <source>The breakpoint at %1 cannot be set: %2
</source>
        <translation>Der Haltepunkt bei %1 kann nicht gesetzt werden: %2
</translation>
    </message>
    <message>
        <source>The breakpoint at %1 waits until the program loads a library with this line.
</source>
        <translation>Der Haltepunkt bei %1 wartet, bis das Programm eine Bibliothek mit dieser Zeile lädt.
</translation>
    </message>
    <message>
        <source>There is no breakpoint at this line.</source>
        <translation>In dieser Zeile gibt es keinen Haltepunkt.</translation>
    </message>
    <message>
        <source>The target cannot set it: %1</source>
        <translation>Das Zielsystem kann ihn nicht setzen: %1</translation>
    </message>
</context>
<context>
    <name>Breakpoints</name>
    <message>
        <source>Cannot edit breakpoints.

Open a project that supports breakpoints first.</source>
        <translation>Haltepunkte können nicht bearbeitet werden.

Öffnen Sie zuerst ein Projekt, das Haltepunkte unterstützt.</translation>
    </message>
    <message>
        <source>Breakpoints cannot be modified while the processor is running.

Please pause the processor and try again.</source>
        <translation>Haltepunkte können nicht geändert werden, während der Prozessor läuft.

Bitte halten Sie den Prozessor an und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>The breakpoint cannot be set.

Breakpoints are not supported in this file.</source>
        <translation>Der Haltepunkt kann nicht gesetzt werden.

In dieser Datei werden Haltepunkte nicht unterstützt.</translation>
    </message>
    <message>
        <source>The breakpoint could not be modified.</source>
        <translation>Der Haltepunkt konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>The execution environment of the project &apos;%1&apos; does not support breakpoints.</source>
        <translation>Die Ausführungsumgebung des Projekts &apos;%1&apos; unterstützt keine Haltepunkte.</translation>
    </message>
    <message>
        <source>The project &apos;%1&apos; has no execution environment that could set breakpoints.</source>
        <translation>Das Projekt &apos;%1&apos; hat keine Ausführungsumgebung, die Haltepunkte setzen könnte.</translation>
    </message>
</context>
<context>
    <name>BreakpointsDock</name>
    <message>
        <source>Breakpoints</source>
        <translation>Haltepunkte</translation>
    </message>
    <message>
        <source>&amp;Breakpoints</source>
        <translation>&amp;Haltepunkte</translation>
    </message>
    <message>
        <source>Shows or hides the list of breakpoints</source>
        <translation>Zeigt oder verbirgt die Liste der Haltepunkte</translation>
    </message>
</context>
<context>
    <name>BreakpointsPane</name>
    <message>
        <source>Breakpoints</source>
        <translation>Haltepunkte</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>Bedingung</translation>
    </message>
    <message>
        <source>Stop at hit</source>
        <translation>Halt beim Treffer</translation>
    </message>
    <message>
        <source>Print and continue</source>
        <translation>Ausgeben und weiterlaufen</translation>
    </message>
    <message>
        <source>Hits</source>
        <translation>Treffer</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Variable or expression</source>
        <translation>Variable oder Ausdruck</translation>
    </message>
    <message>
        <source>Data at which the program stops</source>
        <translation>Daten, bei denen das Programm anhält</translation>
    </message>
    <message>
        <source>Kind of access</source>
        <translation>Art des Zugriffs</translation>
    </message>
    <message>
        <source>Add Data Breakpoint</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>%1 (not set)</source>
        <translation>%1 (nicht gesetzt)</translation>
    </message>
    <message>
        <source>%1 is read</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>%1 is read or written</source>
        <translation>%1 wird gelesen oder geschrieben</translation>
    </message>
    <message>
        <source>%1 is written</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>The debugger of this project does not offer conditions and data breakpoints.</source>
        <translation>Der Debugger dieses Projekts bietet keine Bedingungen und keine Datenhaltepunkte.</translation>
    </message>
    <message>
        <source>Hardware breakpoints: %1 of %2 used.</source>
        <translation>Hardware-Haltepunkte: %1 von %2 benutzt.</translation>
    </message>
    <message>
        <source>Data breakpoints: %1 of %2 used.</source>
        <translation>Datenhaltepunkte: %1 von %2 benutzt.</translation>
    </message>
    <message>
        <source>is written</source>
        <translation>wird geschrieben</translation>
    </message>
    <message>
        <source>is read</source>
        <translation>wird gelesen</translation>
    </message>
    <message>
        <source>is read or written</source>
        <translation>wird gelesen oder geschrieben</translation>
    </message>
    <message>
        <source>Breakpoints cannot be modified while the processor is running.</source>
        <translation>Haltepunkte können nicht geändert werden, während der Prozessor läuft.</translation>
    </message>
    <message>
        <source>The breakpoint could not be modified.</source>
        <translation>Der Haltepunkt konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a number of hits.</source>
        <translation>&apos;%1&apos; ist keine Anzahl von Treffern.</translation>
    </message>
    <message>
        <source>The breakpoint could not be modified: %1</source>
        <translation>Der Haltepunkt konnte nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>The breakpoint could not be set: %1</source>
        <translation>Der Haltepunkt konnte nicht gesetzt werden: %1</translation>
    </message>
</context>
<context>
    <name>BuildControl</name>
    <message>
        <source>The project cannot be built.

No build environment is available.</source>
        <translation>Das Projekt kann nicht erstellt werden.

Es ist keine Build-Umgebung verfügbar.</translation>
    </message>
    <message>
        <source>Building: %1 of %2</source>
        <translation>Erstellen: %1 von %2</translation>
    </message>
    <message>
        <source>Build stopped after %1 s</source>
        <translation>Erstellen nach %1 s abgebrochen</translation>
    </message>
    <message>
        <source>Build finished in %1 s</source>
        <translation>Erstellen in %1 s abgeschlossen</translation>
    </message>
    <message>
        <source>Build failed after %1 s</source>
        <translation>Erstellen nach %1 s fehlgeschlagen</translation>
    </message>
    <message>
        <source>The contents that the build environment has sent for project &apos;%1&apos; cannot be read: %2
</source>
        <translation>Der Inhalt, den die Build-Umgebung für das Projekt &apos;%1&apos; gesendet hat, kann nicht gelesen werden: %2
</translation>
    </message>
    <message>
        <source>A build is running already.
</source>
        <translation>Es läuft schon ein Build.
</translation>
    </message>
</context>
<context>
    <name>BuildPanel</name>
    <message>
        <source>Builds</source>
        <translation>Builds</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
</context>
<context>
    <name>BuildRun</name>
    <message>
        <source>Errors: %1, warnings: %2</source>
        <translation>Fehler: %1, Warnungen: %2</translation>
    </message>
    <message>
        <source>Stopped.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>Failed. %1</source>
        <translation>Fehlgeschlagen. %1</translation>
    </message>
    <message>
        <source>Done. %1</source>
        <translation>Fertig. %1</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Fertig.</translation>
    </message>
    <message>
        <source>Everything is up to date.</source>
        <translation>Alles ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Project &apos;%1&apos;, configuration &apos;%2&apos;</source>
        <translation>Projekt &apos;%1&apos;, Konfiguration &apos;%2&apos;</translation>
    </message>
    <message>
        <source>The file &apos;%1&apos; is not compiled in the configuration &apos;%2&apos;.</source>
        <translation>Die Datei &apos;%1&apos; wird in der Konfiguration &apos;%2&apos; nicht übersetzt.</translation>
    </message>
    <message>
        <source>Cannot write &apos;%1&apos;: %2</source>
        <translation>&apos;%1&apos; kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Failed.</source>
        <translation>Fehlgeschlagen.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not removed, because it is not in the directory &apos;%2&apos;.</source>
        <translation>&apos;%1&apos; wird nicht entfernt, weil es nicht im Verzeichnis &apos;%2&apos; liegt.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be removed.</source>
        <translation>&apos;%1&apos; kann nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Files removed: %1</source>
        <translation>Entfernte Dateien: %1</translation>
    </message>
    <message>
        <source>Compiling %1</source>
        <translation>Übersetze %1</translation>
    </message>
    <message>
        <source>Linking %1</source>
        <translation>Binde %1</translation>
    </message>
    <message>
        <source>Making %1</source>
        <translation>Erzeuge %1</translation>
    </message>
</context>
<context>
    <name>CallStack</name>
    <message>
        <source>The program is not paused.</source>
        <translation>Das Programm ist nicht angehalten.</translation>
    </message>
    <message>
        <source>The tasks of the program are not known: %1
</source>
        <translation>Die Tasks des Programms sind nicht bekannt: %1
</translation>
    </message>
</context>
<context>
    <name>CallStackPane</name>
    <message>
        <source>Call stack</source>
        <translation>Aufrufstapel</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Copy Call Stack</source>
        <translation>Aufrufstapel kopieren</translation>
    </message>
    <message>
        <source>The debugger of this project does not offer a call stack.</source>
        <translation>Der Debugger dieses Projekts bietet keinen Aufrufstapel.</translation>
    </message>
    <message>
        <source>There is no program to be debugged.</source>
        <translation>Es gibt kein Programm, das sich debuggen lässt.</translation>
    </message>
    <message>
        <source>The program has no threads.</source>
        <translation>Das Programm hat keine Threads.</translation>
    </message>
    <message>
        <source>Show more</source>
        <translation>Mehr zeigen</translation>
    </message>
</context>
<context>
    <name>ChildProcess</name>
    <message>
        <source>Cannot run &apos;%1&apos;: %2</source>
        <translation>&apos;%1&apos; kann nicht ausgeführt werden: %2</translation>
    </message>
</context>
<context>
    <name>ConfigurationDropdown</name>
    <message>
        <source>Current configuration</source>
        <translation>Aktuelle Konfiguration</translation>
    </message>
</context>
<context>
    <name>ContextHelp</name>
    <message>
        <source>More in the manual (F1)</source>
        <translation>Mehr im Handbuch (F1)</translation>
    </message>
</context>
<context>
    <name>DataBreakpoints</name>
    <message>
        <source>There is no such breakpoint.</source>
        <translation>Diesen Haltepunkt gibt es nicht.</translation>
    </message>
    <message>
        <source>The program cannot be paused.</source>
        <translation>Das Programm kann nicht angehalten werden.</translation>
    </message>
    <message>
        <source>The target cannot watch these data.</source>
        <translation>Das Zielsystem kann diese Daten nicht überwachen.</translation>
    </message>
    <message>
        <source>The data breakpoint &apos;%1&apos; cannot be set: %2
</source>
        <translation>Der Datenhaltepunkt &apos;%1&apos; kann nicht gesetzt werden: %2
</translation>
    </message>
</context>
<context>
    <name>DebugActionDialogBase</name>
    <message>
        <source>Don&apos;t ask again</source>
        <translation>Nicht mehr fragen</translation>
    </message>
</context>
<context>
    <name>DebugAnswer</name>
    <message>
        <source>The debug session has ended.</source>
        <translation>Die Debug-Sitzung ist beendet.</translation>
    </message>
</context>
<context>
    <name>DebugControl</name>
    <message>
        <source>A breakpoint has been hit in project &apos;%1&apos;.

The current project will be switched.</source>
        <translation>Im Projekt &apos;%1&apos; wurde ein Haltepunkt erreicht.

Das aktuelle Projekt wird gewechselt.</translation>
    </message>
</context>
<context>
    <name>DebugOptions</name>
    <message>
        <source>Do you want to start the current processor or all processors?</source>
        <translation>Möchten Sie den aktuellen Prozessor oder alle Prozessoren starten?</translation>
    </message>
    <message>
        <source>Do you want to pause the current processor or all processors?</source>
        <translation>Möchten Sie den aktuellen Prozessor oder alle Prozessoren anhalten?</translation>
    </message>
    <message>
        <source>Do you want to restart the current processor or all processors?</source>
        <translation>Möchten Sie den aktuellen Prozessor oder alle Prozessoren neu starten?</translation>
    </message>
    <message>
        <source>Do you want to wake up the current processor or all processors?</source>
        <translation>Möchten Sie den aktuellen Prozessor oder alle Prozessoren aufwecken?</translation>
    </message>
    <message>
        <source>Start current processor</source>
        <translation>Aktuellen Prozessor starten</translation>
    </message>
    <message>
        <source>Start all processors</source>
        <translation>Alle Prozessoren starten</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>Fragen</translation>
    </message>
    <message>
        <source>Pause current processor</source>
        <translation>Aktuellen Prozessor anhalten</translation>
    </message>
    <message>
        <source>Pause all processors</source>
        <translation>Alle Prozessoren anhalten</translation>
    </message>
    <message>
        <source>Restart current processor</source>
        <translation>Aktuellen Prozessor neu starten</translation>
    </message>
    <message>
        <source>Restart all processors</source>
        <translation>Alle Prozessoren neu starten</translation>
    </message>
    <message>
        <source>Wakeup current processor</source>
        <translation>Aktuellen Prozessor aufwecken</translation>
    </message>
    <message>
        <source>Wakeup all processors</source>
        <translation>Alle Prozessoren aufwecken</translation>
    </message>
    <message>
        <source>Leave other processors running</source>
        <translation>Andere Prozessoren weiterlaufen lassen</translation>
    </message>
</context>
<context>
    <name>DebugOptionsPageBase</name>
    <message>
        <source>Debug</source>
        <translation>Debuggen</translation>
    </message>
    <message>
        <source>Debug behaviour:</source>
        <translation>Verhalten beim Debuggen:</translation>
    </message>
    <message>
        <source>Action on run:</source>
        <translation>Beim Starten:</translation>
    </message>
    <message>
        <source>Action on pause:</source>
        <translation>Beim Anhalten:</translation>
    </message>
    <message>
        <source>Action on restart:</source>
        <translation>Beim Neustart:</translation>
    </message>
    <message>
        <source>Action on wakeup:</source>
        <translation>Beim Aufwecken:</translation>
    </message>
    <message>
        <source>Action on breakpoint hit:</source>
        <translation>Bei einem Haltepunkt:</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Help&lt;/h3&gt;

&lt;p&gt;For each of the debug events choose the action that you want to occur. You can restrict the action
to the current processor or target all processors.&lt;/p&gt;
&lt;p&gt;If you choose &apos;Ask&apos; you will be presented with a dialog containing the same choices whenever
the event occurs.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Hilfe&lt;/h3&gt;

&lt;p&gt;Wählen Sie für jedes Ereignis beim Debuggen, was geschehen soll. Es kann den aktuellen
Prozessor oder alle Prozessoren betreffen.&lt;/p&gt;
&lt;p&gt;Mit &apos;Fragen&apos; wird ein Dialog mit denselben Möglichkeiten gezeigt, sooft das Ereignis
eintritt.&lt;/p&gt;</translation>
    </message>
</context>
<context>
    <name>DebugServer</name>
    <message>
        <source>&apos;%1&apos; cannot be started: another program uses its address &apos;%2&apos; already.</source>
        <translation>&apos;%1&apos; kann nicht gestartet werden: Ein anderes Programm benutzt bereits die Adresse &apos;%2&apos;.</translation>
    </message>
    <message>
        <source>Waiting for &apos;%1&apos;...</source>
        <translation>Warten auf &apos;%1&apos;...</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>The wait for &apos;%1&apos; was stopped.</source>
        <translation>Das Warten auf &apos;%1&apos; wurde abgebrochen.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ended before gdb was connected: %2</source>
        <translation>&apos;%1&apos; endete, bevor gdb verbunden war: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; does not accept gdb at &apos;%2&apos; within %3 s: %4</source>
        <translation>&apos;%1&apos; nimmt gdb bei &apos;%2&apos; nicht innerhalb von %3 s an: %4</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has ended.</source>
        <translation>&apos;%1&apos; hat geendet.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has ended: %2</source>
        <translation>&apos;%1&apos; hat geendet: %2</translation>
    </message>
</context>
<context>
    <name>DebugWindows</name>
    <message>
        <source>Registers</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>Peripherals</source>
        <translation>Peripherie</translation>
    </message>
    <message>
        <source>Watches</source>
        <translation>Überwachung</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Call Stack</source>
        <translation>Aufrufstapel</translation>
    </message>
    <message>
        <source>&amp;Call Stack</source>
        <translation>&amp;Aufrufstapel</translation>
    </message>
    <message>
        <source>Shows or hides the functions that were called</source>
        <translation>Zeigt oder verbirgt die aufgerufenen Funktionen</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>&amp;Variables</source>
        <translation>&amp;Variablen</translation>
    </message>
    <message>
        <source>Shows or hides the variables of the function</source>
        <translation>Zeigt oder verbirgt die Variablen der Funktion</translation>
    </message>
</context>
<context>
    <name>DisassemblerBar</name>
    <message>
        <source>Go to address or symbol</source>
        <translation>Zu Adresse oder Symbol gehen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>DisassemblerDocument</name>
    <message>
        <source>Disassembly: </source>
        <translation>Disassembly: </translation>
    </message>
</context>
<context>
    <name>DisassemblerView</name>
    <message>
        <source>Cannot find the string %1.</source>
        <translation>Der Text %1 wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Machine instructions</source>
        <translation>Maschinenbefehle</translation>
    </message>
    <message>
        <source>No instructions can be read here.</source>
        <translation>Hier können keine Befehle gelesen werden.</translation>
    </message>
    <message>
        <source>Searching...</source>
        <translation>Suche läuft...</translation>
    </message>
    <message>
        <source>Passed the end of the disassembly</source>
        <translation>Suche hat das Ende des Disassemblys überschritten</translation>
    </message>
    <message>
        <source>There is no symbol or address &apos;%1&apos;.</source>
        <translation>Es gibt kein Symbol und keine Adresse &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>0x%1 is outside the memory that is shown here.</source>
        <translation>0x%1 liegt außerhalb des Speichers, der hier gezeigt wird.</translation>
    </message>
    <message>
        <source>Reading the instructions...</source>
        <translation>Die Befehle werden gelesen...</translation>
    </message>
</context>
<context>
    <name>Document</name>
    <message>
        <source>A newer version of this file exists on disk:

%1

Are you sure that you want to overwrite the newer version?</source>
        <translation>Auf dem Datenträger gibt es eine neuere Fassung dieser Datei:

%1

Möchten Sie die neuere Fassung wirklich überschreiben?</translation>
    </message>
</context>
<context>
    <name>EditCommands</name>
    <message>
        <source>No line of the output leads to a source file</source>
        <translation>Keine Zeile der Ausgabe führt zu einer Quelldatei</translation>
    </message>
    <message>
        <source>Files of this kind have no line comments</source>
        <translation>Dateien dieser Art haben keine Zeilenkommentare</translation>
    </message>
    <message>
        <source>No selected line is a comment</source>
        <translation>Keine der ausgewählten Zeilen ist ein Kommentar</translation>
    </message>
    <message>
        <source>Enter line number:</source>
        <translation>Zeilennummer eingeben:</translation>
    </message>
    <message>
        <source>No project of the workspace contains this file</source>
        <translation>Kein Projekt des Arbeitsbereichs enthält diese Datei</translation>
    </message>
</context>
<context>
    <name>EditConfigurationsDialog</name>
    <message>
        <source>Enter a new name for configuration &apos;%1&apos;:</source>
        <translation>Neuer Name für die Konfiguration &apos;%1&apos;:</translation>
    </message>
    <message>
        <source>A configuration with that name already exists.</source>
        <translation>Eine Konfiguration mit diesem Namen gibt es bereits.</translation>
    </message>
    <message>
        <source>The project must contain at least one configuration.</source>
        <translation>Das Projekt muss mindestens eine Konfiguration enthalten.</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove configuration &apos;%1&apos;.</source>
        <translation>Möchten Sie die Konfiguration &apos;%1&apos; wirklich entfernen?</translation>
    </message>
</context>
<context>
    <name>EditConfigurationsDialogBase</name>
    <message>
        <source>Edit Configurations</source>
        <translation>Konfigurationen bearbeiten</translation>
    </message>
    <message>
        <source>Configurations:</source>
        <translation>Konfigurationen:</translation>
    </message>
    <message>
        <source>Configurations</source>
        <translation>Konfigurationen</translation>
    </message>
    <message>
        <source>Re&amp;name</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ExceptionStops</name>
    <message>
        <source>The program cannot be stopped at exceptions: %1
</source>
        <translation>Das Programm kann bei Exceptions nicht angehalten werden: %1
</translation>
    </message>
</context>
<context>
    <name>ExternalTool</name>
    <message>
        <source>Running &apos;%1 %2&apos;...
</source>
        <translation>&apos;%1 %2&apos; wird ausgeführt...
</translation>
    </message>
    <message>
        <source>The directory &apos;%1&apos; does not exist
</source>
        <translation>Das Verzeichnis &apos;%1&apos; gibt es nicht
</translation>
    </message>
    <message>
        <source>Could not start process
</source>
        <translation>Der Prozess konnte nicht gestartet werden
</translation>
    </message>
    <message>
        <source>Further output of &apos;%1&apos; is not shown
</source>
        <translation>Weitere Ausgaben von &apos;%1&apos; werden nicht gezeigt
</translation>
    </message>
    <message>
        <source>Process &apos;%1&apos; exited normally (%2)
</source>
        <translation>Der Prozess &apos;%1&apos; wurde normal beendet (%2)
</translation>
    </message>
    <message>
        <source>Process &apos;%1&apos; exited prematurely
</source>
        <translation>Der Prozess &apos;%1&apos; wurde vorzeitig beendet
</translation>
    </message>
</context>
<context>
    <name>FaultPanel</name>
    <message>
        <source>Fault</source>
        <translation>Fehlerursache</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
</context>
<context>
    <name>FaultReport</name>
    <message>
        <source>an instruction was fetched where that is not allowed</source>
        <translation>ein Befehl wurde geholt, wo das nicht erlaubt ist</translation>
    </message>
    <message>
        <source>data was accessed where that is not allowed</source>
        <translation>auf Daten wurde zugegriffen, wo das nicht erlaubt ist</translation>
    </message>
    <message>
        <source>the return from an exception read a stack where that is not allowed</source>
        <translation>die Rückkehr aus einer Ausnahme las einen Stapel, wo das nicht erlaubt ist</translation>
    </message>
    <message>
        <source>an exception wrote to a stack where that is not allowed</source>
        <translation>eine Ausnahme schrieb auf einen Stapel, wo das nicht erlaubt ist</translation>
    </message>
    <message>
        <source>floating point registers were saved where that is not allowed</source>
        <translation>Gleitkommaregister wurden gesichert, wo das nicht erlaubt ist</translation>
    </message>
    <message>
        <source>an instruction was fetched from an address without memory</source>
        <translation>ein Befehl wurde von einer Adresse ohne Speicher geholt</translation>
    </message>
    <message>
        <source>data was accessed at an address without memory or device</source>
        <translation>auf Daten wurde an einer Adresse ohne Speicher oder Gerät zugegriffen</translation>
    </message>
    <message>
        <source>a delayed write to an address without memory or device; the faulting instruction is an earlier one</source>
        <translation>ein verzögertes Schreiben an eine Adresse ohne Speicher oder Gerät; der fehlerhafte Befehl ist ein früherer</translation>
    </message>
    <message>
        <source>the return from an exception read a stack without memory</source>
        <translation>die Rückkehr aus einer Ausnahme las einen Stapel ohne Speicher</translation>
    </message>
    <message>
        <source>an exception wrote to a stack without memory</source>
        <translation>eine Ausnahme schrieb auf einen Stapel ohne Speicher</translation>
    </message>
    <message>
        <source>floating point registers were saved where there is no memory</source>
        <translation>Gleitkommaregister wurden gesichert, wo es keinen Speicher gibt</translation>
    </message>
    <message>
        <source>the instruction is undefined</source>
        <translation>der Befehl ist nicht definiert</translation>
    </message>
    <message>
        <source>the processor was not in Thumb state, as after a jump to an even address</source>
        <translation>der Prozessor war nicht im Thumb-Zustand, wie nach einem Sprung an eine gerade Adresse</translation>
    </message>
    <message>
        <source>the return from an exception had an invalid return value</source>
        <translation>die Rückkehr aus einer Ausnahme hatte einen ungültigen Rückkehrwert</translation>
    </message>
    <message>
        <source>a coprocessor or floating point unit is missing or disabled</source>
        <translation>ein Koprozessor oder eine Gleitkommaeinheit fehlt oder ist abgeschaltet</translation>
    </message>
    <message>
        <source>the stack limit was exceeded</source>
        <translation>die Grenze des Stapels wurde überschritten</translation>
    </message>
    <message>
        <source>data was accessed at an unaligned address</source>
        <translation>auf Daten wurde an einer nicht ausgerichteten Adresse zugegriffen</translation>
    </message>
    <message>
        <source>a division by zero</source>
        <translation>eine Division durch null</translation>
    </message>
    <message>
        <source>the vector of an exception could not be read</source>
        <translation>der Vektor einer Ausnahme konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>a breakpoint instruction without a debugger</source>
        <translation>ein Haltepunktbefehl ohne Debugger</translation>
    </message>
    <message>
        <source>Interrupt %1</source>
        <translation>Interrupt %1</translation>
    </message>
    <message>
        <source>Exception %1</source>
        <translation>Exception %1</translation>
    </message>
    <message>
        <source>the address was %1</source>
        <translation>die Adresse war %1</translation>
    </message>
    <message>
        <source>, escalated from another fault</source>
        <translation>, aus einem anderen Fehler hervorgegangen</translation>
    </message>
    <message>
        <source> at %1</source>
        <translation> bei %1</translation>
    </message>
    <message>
        <source> at %1, %2</source>
        <translation> bei %1, %2</translation>
    </message>
</context>
<context>
    <name>FileCommands</name>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>The file could not be opened.

It will be removed from the Recent Files list.</source>
        <translation>Die Datei konnte nicht geöffnet werden.

Sie wird aus der Liste der zuletzt geöffneten Dateien entfernt.</translation>
    </message>
    <message>
        <source>Are you sure that you want to revert to the saved version of:

%1

</source>
        <translation>Möchten Sie wirklich zur gespeicherten Fassung dieser Datei zurückkehren?

%1

</translation>
    </message>
    <message>
        <source>Save File</source>
        <translation>Datei speichern</translation>
    </message>
    <message>
        <source>Source Files (*.c *.cpp *.h *.kor);;Python Files (*.py);;All Files (*.*)</source>
        <translation>Quelldateien (*.c *.cpp *.h *.kor);;Python-Dateien (*.py);;Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>The following file is open and has unsaved changes:

%1

Are you sure that you want to discard them and to overwrite the file?</source>
        <translation>Die folgende Datei ist geöffnet und hat nicht gespeicherte Änderungen:

%1

Möchten Sie die Änderungen wirklich verwerfen und die Datei überschreiben?</translation>
    </message>
    <message>
        <source>The following file is open:

%1

Are you sure that you want to close it and to overwrite it?</source>
        <translation>Die folgende Datei ist geöffnet:

%1

Möchten Sie sie wirklich schließen und überschreiben?</translation>
    </message>
    <message>
        <source>Insert File</source>
        <translation>Datei einfügen</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>Could not open file:/n/n%1</source>
        <translation>Die Datei konnte nicht geöffnet werden:/n/n%1</translation>
    </message>
    <message>
        <source>The file %1 does not exist</source>
        <translation>Die Datei %1 gibt es nicht</translation>
    </message>
    <message>
        <source>You will lose your changes that are not saved.</source>
        <translation>Ihre nicht gespeicherten Änderungen gehen dabei verloren.</translation>
    </message>
</context>
<context>
    <name>FileFindCommands</name>
    <message>
        <source>Searching for &apos;%1&apos;...
</source>
        <translation>Suche nach &apos;%1&apos;...
</translation>
    </message>
    <message>
        <source>The search was stopped. </source>
        <translation>Die Suche wurde abgebrochen. </translation>
    </message>
    <message>
        <source>Searching: %1 files, %2 lines found</source>
        <translation>Suche: %1 Dateien, %2 Zeilen gefunden</translation>
    </message>
    <message>
        <source>1 file of another type has not been searched.
</source>
        <translation>1 Datei eines anderen Typs wurde nicht durchsucht.
</translation>
    </message>
    <message>
        <source>%1 files of other types have not been searched.
</source>
        <translation>%1 Dateien anderer Typen wurden nicht durchsucht.
</translation>
    </message>
    <message>
        <source>1 occurrence has been found.</source>
        <translation>1 Fundstelle.</translation>
    </message>
    <message>
        <source>%1 occurrences have been found.</source>
        <translation>%1 Fundstellen.</translation>
    </message>
    <message>
        <source>1 file or folder could not be read.</source>
        <translation>1 Datei oder Ordner konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 files or folders could not be read.</source>
        <translation>%1 Dateien oder Ordner konnten nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>FileFormatButton</name>
    <message>
        <source>Encoding and line ends of the file</source>
        <translation>Kodierung und Zeilenenden der Datei</translation>
    </message>
    <message>
        <source>File format %1</source>
        <translation>Dateiformat %1</translation>
    </message>
    <message>
        <source>Save as &amp;UTF-8</source>
        <translation>Als &amp;UTF-8 speichern</translation>
    </message>
    <message>
        <source>Save as &amp;Latin-1</source>
        <translation>Als &amp;Latin-1 speichern</translation>
    </message>
    <message>
        <source>Save as %1</source>
        <translation>Als %1 speichern</translation>
    </message>
    <message>
        <source>Line ends L&amp;F (Unix)</source>
        <translation>Zeilenenden L&amp;F (Unix)</translation>
    </message>
    <message>
        <source>Line ends &amp;CRLF (Windows)</source>
        <translation>Zeilenenden &amp;CRLF (Windows)</translation>
    </message>
    <message>
        <source>mixed line ends</source>
        <translation>gemischte Zeilenenden</translation>
    </message>
    <message>
        <source>%1 was %2 and is saved as %3</source>
        <translation>%1 war %2 und ist als %3 gespeichert</translation>
    </message>
</context>
<context>
    <name>FileListDialog</name>
    <message>
        <source>Directories</source>
        <translation>Verzeichnisse</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Add item to list</source>
        <translation>Eintrag zur Liste hinzufügen</translation>
    </message>
    <message>
        <source>Remove item from list</source>
        <translation>Eintrag aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Move item down</source>
        <translation>Eintrag nach unten verschieben</translation>
    </message>
    <message>
        <source>Move item up</source>
        <translation>Eintrag nach oben verschieben</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FilterEdit</name>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>FindCommands</name>
    <message>
        <source>1 occurrence has been replaced.</source>
        <translation>1 Fundstelle wurde ersetzt.</translation>
    </message>
    <message>
        <source>%1 occurrences have been replaced.</source>
        <translation>%1 Fundstellen wurden ersetzt.</translation>
    </message>
    <message>
        <source>More than %1 matches</source>
        <translation>Mehr als %1 Treffer</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>Kein Treffer</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 Treffer</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 Treffer</translation>
    </message>
    <message>
        <source>Passed the end of the file</source>
        <translation>Suche hat das Ende der Datei überschritten</translation>
    </message>
    <message>
        <source>Cannot find the string %1.</source>
        <translation>Der Text %1 wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Error in the expression: %1</source>
        <translation>Fehler im Ausdruck: %1</translation>
    </message>
    <message>
        <source>The window in front has no text that can be changed</source>
        <translation>Das vordere Fenster hat keinen Text, der geändert werden kann</translation>
    </message>
    <message>
        <source>The window in front has no text to search in</source>
        <translation>Das vordere Fenster hat keinen Text, der durchsucht werden kann</translation>
    </message>
    <message>
        <source>The expression takes too long</source>
        <translation>Der Ausdruck dauert zu lange</translation>
    </message>
    <message>
        <source>The search for %1 was given up: the expression takes too long.</source>
        <translation>Die Suche nach %1 wurde aufgegeben: Der Ausdruck dauert zu lange.</translation>
    </message>
</context>
<context>
    <name>FindDialogBase</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Fi&lt;u&gt;n&lt;/u&gt;d what:</source>
        <translation>Suche&lt;u&gt;n&lt;/u&gt; nach:</translation>
    </message>
    <message>
        <source>Match &amp;whole word only</source>
        <translation>Nur ganze &amp;Wörter</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß- und Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Regular e&amp;xpression</source>
        <translation>Regulärer &amp;Ausdruck</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Richtung</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>&amp;Find Next</source>
        <translation>Weiter&amp;suchen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FindInFilesDialog</name>
    <message>
        <source>Choose Directory</source>
        <translation>Verzeichnis wählen</translation>
    </message>
</context>
<context>
    <name>FindInFilesDialogBase</name>
    <message>
        <source>Find in Files</source>
        <translation>In Dateien suchen</translation>
    </message>
    <message>
        <source>Find what:</source>
        <translation>Suchen nach:</translation>
    </message>
    <message>
        <source>File types:</source>
        <translation>Dateitypen:</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>Suchen in:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>&amp;Search in:</source>
        <translation>&amp;Bereich:</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Files of the current project</source>
        <translation>Dateien des aktuellen Projekts</translation>
    </message>
    <message>
        <source>Files of all projects</source>
        <translation>Dateien aller Projekte</translation>
    </message>
    <message>
        <source>Open documents</source>
        <translation>Offene Dokumente</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß- und Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Match whole &amp;word</source>
        <translation>Nur ganze &amp;Wörter</translation>
    </message>
    <message>
        <source>Look in subfolders</source>
        <translation>Unterordner durchsuchen</translation>
    </message>
    <message>
        <source>Use &amp;regular expressions</source>
        <translation>&amp;Reguläre Ausdrücke</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FullTextIndex</name>
    <message>
        <source>&lt;html&gt;&lt;head&gt;&lt;title&gt;Search Results&lt;/title&gt;&lt;/head&gt;&lt;body&gt;</source>
        <translation>&lt;html&gt;&lt;head&gt;&lt;title&gt;Suchergebnisse&lt;/title&gt;&lt;/head&gt;&lt;body&gt;</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Search results for &quot;%1&quot;:&lt;/h2&gt;</source>
        <translation>&lt;h2&gt;Suchergebnisse für &quot;%1&quot;:&lt;/h2&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;a href=&apos;%1&apos;&gt;%2&lt;/a&gt;&lt;br&gt;%3&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;a href=&apos;%1&apos;&gt;%2&lt;/a&gt;&lt;br&gt;%3&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;%1 matches.&lt;/p&gt;</source>
        <translation>&lt;p&gt;%1 Treffer.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;Only the first 20 matches are displayed. Try refining your search terms.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Nur die ersten 20 Treffer werden angezeigt. Versuchen Sie, die Suchbegriffe genauer zu fassen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
</context>
<context>
    <name>GdbEnvironment</name>
    <message>
        <source>There is no program to be debugged: build the project, or set the project property &quot;Program&quot;.
</source>
        <translation>Es gibt kein Programm, das sich debuggen lässt: Erstellen Sie das Projekt, oder setzen Sie die Projekteigenschaft &quot;Programm&quot;.
</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a program that can be debugged.
</source>
        <translation>&apos;%1&apos; ist kein Programm, das sich debuggen lässt.
</translation>
    </message>
    <message>
        <source>The memory region &apos;%1&apos; is invalid; the format is name:start:length:kind.
</source>
        <translation>Der Speicherbereich &apos;%1&apos; ist ungültig; die Form ist Name:Anfang:Länge:Art.
</translation>
    </message>
    <message>
        <source>no program is being debugged</source>
        <translation>es wird kein Programm debuggt</translation>
    </message>
    <message>
        <source>Step Out</source>
        <translation>Funktion verlassen</translation>
    </message>
    <message>
        <source>Runs until the current function returns to its caller.</source>
        <translation>Läuft, bis die aktuelle Funktion zu ihrem Aufrufer zurückkehrt.</translation>
    </message>
    <message>
        <source>Step Instruction</source>
        <translation>Einzelner Befehl</translation>
    </message>
    <message>
        <source>Executes one instruction of the processor.</source>
        <translation>Führt einen Befehl des Prozessors aus.</translation>
    </message>
    <message>
        <source>Reload Program</source>
        <translation>Programm neu laden</translation>
    </message>
    <message>
        <source>Loads the last build of the program and pauses it at its start. Breakpoints stay.</source>
        <translation>Lädt den letzten Build des Programms und hält es an seinem Anfang an. Haltepunkte bleiben.</translation>
    </message>
    <message>
        <source>Load Symbols...</source>
        <translation>Symbole laden...</translation>
    </message>
    <message>
        <source>Adds the symbols of another program, such as a boot loader.</source>
        <translation>Fügt die Symbole eines weiteren Programms hinzu, etwa eines Bootloaders.</translation>
    </message>
    <message>
        <source>Log the Dialogue with gdb</source>
        <translation>Dialog mit gdb protokollieren</translation>
    </message>
    <message>
        <source>Shows every line sent to gdb and received from it on the output page &quot;gdb&quot;.</source>
        <translation>Zeigt jede Zeile, die an gdb gesendet und von gdb empfangen wird, auf der Ausgabeseite &quot;gdb&quot;.</translation>
    </message>
    <message>
        <source>Load Symbols</source>
        <translation>Symbole laden</translation>
    </message>
    <message>
        <source>The next statement cannot be set, because the program is not paused.
</source>
        <translation>Die nächste Anweisung kann nicht gesetzt werden, weil das Programm nicht angehalten ist.
</translation>
    </message>
    <message>
        <source>The next statement cannot be set: line %1 has no code.
</source>
        <translation>Die nächste Anweisung kann nicht gesetzt werden: Zeile %1 hat keinen Code.
</translation>
    </message>
    <message>
        <source>The next statement cannot be set: gdb refuses it.
</source>
        <translation>Die nächste Anweisung kann nicht gesetzt werden: gdb lehnt es ab.
</translation>
    </message>
    <message>
        <source>Stop Where Exceptions Are Thrown</source>
        <translation>Anhalten, wo Exceptions ausgelöst werden</translation>
    </message>
    <message>
        <source>Pauses a C++ program at each throw expression, also in later sessions.</source>
        <translation>Hält ein C++-Programm an jedem throw-Ausdruck an, auch in späteren Sitzungen.</translation>
    </message>
    <message>
        <source>Stop Where Exceptions Are Caught</source>
        <translation>Anhalten, wo Exceptions abgefangen werden</translation>
    </message>
    <message>
        <source>Pauses a C++ program where a handler catches an exception, also in later sessions.</source>
        <translation>Hält ein C++-Programm an, wo eine Behandlungsroutine eine Exception abfängt, auch in späteren Sitzungen.</translation>
    </message>
    <message>
        <source>The program writes to the window &quot;Target console&quot;: choose &quot;Debug Windows&quot; in the menu &quot;Debug&quot; to open it.
</source>
        <translation>Das Programm schreibt in das Fenster &quot;Zielkonsole&quot;: Es lässt sich im Menü &quot;Debuggen&quot; unter &quot;Debug-Fenster&quot; öffnen.
</translation>
    </message>
</context>
<context>
    <name>GdbProperties</name>
    <message>
        <source>Target</source>
        <translation>Zielsystem</translation>
    </message>
    <message>
        <source>The kind of target that the program runs on.</source>
        <translation>Die Art des Zielsystems, auf dem das Programm läuft.</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>This computer</source>
        <translation>Dieser Rechner</translation>
    </message>
    <message>
        <source>Emulated board (QEMU)</source>
        <translation>Emulierte Platine (QEMU)</translation>
    </message>
    <message>
        <source>Debug server (gdbserver, OpenOCD, simavr)</source>
        <translation>Debug-Server (gdbserver, OpenOCD, simavr)</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>The program to debug. May contain $(Configuration) and $(Project). Empty for the output of the project&apos;s build.</source>
        <translation>Das Programm, das debuggt wird. Darf $(Configuration) und $(Project) enthalten. Leer für die Ausgabe des Builds des Projekts.</translation>
    </message>
    <message>
        <source>Run to</source>
        <translation>Laufen bis</translation>
    </message>
    <message>
        <source>The function at which a session starts. Empty to start at the first instruction.</source>
        <translation>Die Funktion, an der eine Sitzung beginnt. Leer, um am ersten Befehl zu beginnen.</translation>
    </message>
    <message>
        <source>Time limit</source>
        <translation>Zeitgrenze</translation>
    </message>
    <message>
        <source>gdb</source>
        <translation>gdb</translation>
    </message>
    <message>
        <source>The gdb to use. Empty to choose it by the program&apos;s processor.</source>
        <translation>Das gdb, das benutzt wird. Leer, um es nach dem Prozessor des Programms zu wählen.</translation>
    </message>
    <message>
        <source>gdb commands</source>
        <translation>gdb-Befehle</translation>
    </message>
    <message>
        <source>Commands for gdb&apos;s console after it has connected, separated by &apos;;&apos;.</source>
        <translation>Befehle für die Konsole von gdb nach dem Verbinden, getrennt durch &apos;;&apos;.</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Processors of projects with the same group run, pause and restart together.</source>
        <translation>Prozessoren von Projekten mit derselben Gruppe laufen, halten und starten gemeinsam.</translation>
    </message>
    <message>
        <source>Emulated board</source>
        <translation>Emulierte Platine</translation>
    </message>
    <message>
        <source>Board</source>
        <translation>Platine</translation>
    </message>
    <message>
        <source>A board of QEMU: mps2-an385, mps2-an386, mps2-an500, mps2-an505, mps2-an521, mps3-an547, lm3s6965evb, netduinoplus2, stm32vldiscovery, microbit or another one.</source>
        <translation>Eine Platine von QEMU: mps2-an385, mps2-an386, mps2-an500, mps2-an505, mps2-an521, mps3-an547, lm3s6965evb, netduinoplus2, stm32vldiscovery, microbit oder eine andere.</translation>
    </message>
    <message>
        <source>Second core&apos;s program</source>
        <translation>Programm des zweiten Kerns</translation>
    </message>
    <message>
        <source>For a board with two cores (mps2-an521).</source>
        <translation>Für eine Platine mit zwei Kernen (mps2-an521).</translation>
    </message>
    <message>
        <source>Serial port</source>
        <translation>Serielle Schnittstelle</translation>
    </message>
    <message>
        <source>The serial port that the target console shows, counted from 0.</source>
        <translation>Die serielle Schnittstelle, die die Zielkonsole zeigt, gezählt ab 0.</translation>
    </message>
    <message>
        <source>Semihosting</source>
        <translation>Semihosting</translation>
    </message>
    <message>
        <source>Shows semihosting output in the target console.</source>
        <translation>Zeigt die Ausgabe des Semihostings in der Zielkonsole.</translation>
    </message>
    <message>
        <source>QEMU</source>
        <translation>QEMU</translation>
    </message>
    <message>
        <source>The QEMU to use. Empty to choose it by the program&apos;s processor.</source>
        <translation>Das QEMU, das benutzt wird. Leer, um es nach dem Prozessor des Programms zu wählen.</translation>
    </message>
    <message>
        <source>Further arguments</source>
        <translation>Weitere Argumente</translation>
    </message>
    <message>
        <source>Further arguments for QEMU&apos;s command line.</source>
        <translation>Weitere Argumente für die Befehlszeile von QEMU.</translation>
    </message>
    <message>
        <source>Debug server</source>
        <translation>Debug-Server</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>host:port, or the path of a socket.</source>
        <translation>Rechner:Port, oder der Pfad eines Sockets.</translation>
    </message>
    <message>
        <source>Start this server</source>
        <translation>Diesen Server starten</translation>
    </message>
    <message>
        <source>Command line of a server that is started and ended with the session, such as &apos;openocd -f board.cfg&apos;. $(Program) is the program, $(Port) a free port, also in the address. Empty if the server runs already.</source>
        <translation>Befehlszeile eines Servers, der mit der Sitzung gestartet und beendet wird, etwa &apos;openocd -f board.cfg&apos;. $(Program) ist das Programm, $(Port) ein freier Port, auch in der Adresse. Leer, wenn der Server schon läuft.</translation>
    </message>
    <message>
        <source>Load the program</source>
        <translation>Programm laden</translation>
    </message>
    <message>
        <source>Sends the program to the target.</source>
        <translation>Sendet das Programm an das Zielsystem.</translation>
    </message>
    <message>
        <source>Reset command</source>
        <translation>Reset-Befehl</translation>
    </message>
    <message>
        <source>Monitor command that resets the target, after loading and to restart, such as &apos;reset halt&apos; for OpenOCD.</source>
        <translation>Monitor-Befehl, der das Zielsystem zurücksetzt, nach dem Laden und beim Neustart, etwa &apos;reset halt&apos; für OpenOCD.</translation>
    </message>
    <message>
        <source>Leave it running</source>
        <translation>Weiterlaufen lassen</translation>
    </message>
    <message>
        <source>Leaves the target running when a session ends.</source>
        <translation>Lässt das Zielsystem weiterlaufen, wenn eine Sitzung endet.</translation>
    </message>
    <message>
        <source>Memory regions</source>
        <translation>Speicherbereiche</translation>
    </message>
    <message>
        <source>name:start:length:kind, separated by &apos;;&apos;, where kind is ram, rom or io; the region of the code first. Empty to read the regions from the target.</source>
        <translation>Name:Anfang:Länge:Art, getrennt durch &apos;;&apos;, wobei die Art ram, rom oder io ist; der Bereich des Codes zuerst. Leer, um die Bereiche vom Zielsystem zu lesen.</translation>
    </message>
    <message>
        <source>Program of this computer</source>
        <translation>Programm dieses Rechners</translation>
    </message>
    <message>
        <source>Arguments</source>
        <translation>Argumente</translation>
    </message>
    <message>
        <source>Arguments of the program, as on a command line.</source>
        <translation>Argumente des Programms, wie in einer Befehlszeile.</translation>
    </message>
    <message>
        <source>Working directory</source>
        <translation>Arbeitsverzeichnis</translation>
    </message>
    <message>
        <source>Empty for the project&apos;s directory.</source>
        <translation>Leer für das Verzeichnis des Projekts.</translation>
    </message>
    <message>
        <source>Process to attach to</source>
        <translation>Prozess zum Verbinden</translation>
    </message>
    <message>
        <source>The process id for the command &quot;Attach&quot;.</source>
        <translation>Die Prozessnummer für den Befehl &quot;Verbinden&quot;.</translation>
    </message>
    <message>
        <source>Symbols and windows</source>
        <translation>Symbole und Fenster</translation>
    </message>
    <message>
        <source>Device description</source>
        <translation>Gerätebeschreibung</translation>
    </message>
    <message>
        <source>An SVD file, for the peripheral window.</source>
        <translation>Eine SVD-Datei, für das Peripheriefenster.</translation>
    </message>
    <message>
        <source>Read sensitive registers</source>
        <translation>Empfindliche Register lesen</translation>
    </message>
    <message>
        <source>Reads also device registers that change when read.</source>
        <translation>Liest auch Register des Geräts, die sich durch das Lesen ändern.</translation>
    </message>
    <message>
        <source>Source directories</source>
        <translation>Quellverzeichnisse</translation>
    </message>
    <message>
        <source>Where to find source files that were moved after the build.</source>
        <translation>Wo Quelldateien zu finden sind, die nach dem Erstellen verschoben wurden.</translation>
    </message>
    <message>
        <source>Further symbols</source>
        <translation>Weitere Symbole</translation>
    </message>
    <message>
        <source>Programs whose symbols are added, such as a boot loader.</source>
        <translation>Programme, deren Symbole hinzugefügt werden, etwa ein Bootloader.</translation>
    </message>
    <message>
        <source>Allow calls in expressions</source>
        <translation>Aufrufe in Ausdrücken erlauben</translation>
    </message>
    <message>
        <source>Allows expressions to call functions of the program, which then run on the target.</source>
        <translation>Ausdrücke dürfen Funktionen des Programms aufrufen, die dann auf dem Zielsystem laufen.</translation>
    </message>
    <message>
        <source>Verify memory</source>
        <translation>Speicher prüfen</translation>
    </message>
    <message>
        <source>Reads memory back after writing.</source>
        <translation>Liest Speicher nach dem Schreiben zurück.</translation>
    </message>
    <message>
        <source>Debugger</source>
        <translation>Debugger</translation>
    </message>
    <message>
        <source>Environment variables</source>
        <translation>Umgebungsvariablen</translation>
    </message>
    <message>
        <source>NAME=value, separated by &apos;;&apos;. A name alone removes the variable that Varnel itself has.</source>
        <translation>NAME=Wert, getrennt durch &apos;;&apos;. Ein Name allein entfernt die Variable, die Varnel selbst hat.</translation>
    </message>
    <message>
        <source>Stop at faults</source>
        <translation>Bei Ausnahmefehlern anhalten</translation>
    </message>
    <message>
        <source>Stops a Cortex-M program in the handlers of HardFault, MemManage, BusFault and UsageFault, and explains the fault on the page &quot;Debug&quot;.</source>
        <translation>Hält ein Cortex-M-Programm in den Behandlungsroutinen von HardFault, MemManage, BusFault und UsageFault an und erklärt den Ausnahmefehler auf der Seite &quot;Debuggen&quot;.</translation>
    </message>
    <message>
        <source>Seconds without a sign of life while the program is loaded or runs to that function.</source>
        <translation>Sekunden ohne Lebenszeichen, während das Programm geladen wird oder bis zu dieser Funktion läuft.</translation>
    </message>
    <message>
        <source>Text in memory (RTT)</source>
        <translation>Text im Speicher (RTT)</translation>
    </message>
    <message>
        <source>Shows text that the program writes into an RTT buffer in its memory in the target console.</source>
        <translation>Zeigt Text, den das Programm in einen RTT-Puffer in seinem Speicher schreibt, in der Zielkonsole.</translation>
    </message>
    <message>
        <source>Tcl port of OpenOCD</source>
        <translation>Tcl-Port von OpenOCD</translation>
    </message>
    <message>
        <source>Port of a running OpenOCD, usually 6666, by which the memory is read while the program runs. 0 for no such access; an OpenOCD that is started by the line above gets a free port.</source>
        <translation>Port eines laufenden OpenOCD, meist 6666, über den der Speicher gelesen wird, während das Programm läuft. 0 für keinen solchen Zugriff; ein OpenOCD, das durch die Zeile oben gestartet wird, bekommt einen freien Port.</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message>
        <source>Expressions for the tasks of the program&apos;s scheduler, separated by &quot;;&quot;: their number, the one that runs, and of the task $task its stack pointer and a pointer to its name.</source>
        <translation>Ausdrücke für die Tasks des Schedulers im Programm, getrennt durch &quot;;&quot;: ihre Anzahl, der laufende, und vom Task $task der Stapelzeiger und ein Zeiger auf seinen Namen.</translation>
    </message>
</context>
<context>
    <name>GdbSession</name>
    <message>
        <source>&apos;%1&apos; cannot be loaded: %2</source>
        <translation>&apos;%1&apos; kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no debug information: there are no source lines and no variables. Compile with -g.
</source>
        <translation>&apos;%1&apos; hat keine Debug-Informationen: Es gibt keine Quellzeilen und keine Variablen. Übersetzen Sie mit -g.
</translation>
    </message>
    <message>
        <source>The symbols of &apos;%1&apos; cannot be loaded: %2
</source>
        <translation>Die Symbole von &apos;%1&apos; können nicht geladen werden: %2
</translation>
    </message>
    <message>
        <source>The gdb command &apos;%1&apos; failed: %2
</source>
        <translation>Der gdb-Befehl &apos;%1&apos; ist fehlgeschlagen: %2
</translation>
    </message>
    <message>
        <source>The program ended before it could be debugged.</source>
        <translation>Das Programm endete, bevor es debuggt werden konnte.</translation>
    </message>
    <message>
        <source>The program cannot be run to &apos;%1&apos;: %2
</source>
        <translation>Das Programm kann nicht bis &apos;%1&apos; laufen: %2
</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not reached within %2 s; the program is paused at its current location.
</source>
        <translation>&apos;%1&apos; wurde nicht innerhalb von %2 s erreicht; das Programm ist an seiner jetzigen Stelle angehalten.
</translation>
    </message>
    <message>
        <source>The program cannot continue: %1
</source>
        <translation>Das Programm kann nicht weiterlaufen: %1
</translation>
    </message>
    <message>
        <source>The program cannot be run to the cursor: %1
</source>
        <translation>Das Programm kann nicht bis zum Cursor laufen: %1
</translation>
    </message>
    <message>
        <source>&apos;%1&apos; did not stop within %2 s.
</source>
        <translation>&apos;%1&apos; hat nicht innerhalb von %2 s angehalten.
</translation>
    </message>
    <message>
        <source>The step was interrupted.
</source>
        <translation>Der Schritt wurde unterbrochen.
</translation>
    </message>
    <message>
        <source>&apos;%1&apos; does not support waking up its processor.
</source>
        <translation>&apos;%1&apos; unterstützt das Aufwecken seines Prozessors nicht.
</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has ended.
</source>
        <translation>&apos;%1&apos; hat geendet.
</translation>
    </message>
    <message>
        <source>The connection to &apos;%1&apos; is lost.
</source>
        <translation>Die Verbindung zu &apos;%1&apos; ist verloren.
</translation>
    </message>
    <message>
        <source>gdb has ended unexpectedly.
</source>
        <translation>gdb hat unerwartet geendet.
</translation>
    </message>
    <message>
        <source>Starting &apos;%1&apos;...</source>
        <translation>&apos;%1&apos; wird gestartet...</translation>
    </message>
    <message>
        <source>Reading the symbols of &apos;%1&apos;...</source>
        <translation>Die Symbole von &apos;%1&apos; werden gelesen...</translation>
    </message>
    <message>
        <source>Connecting to &apos;%1&apos;...</source>
        <translation>Verbindung mit &apos;%1&apos; wird hergestellt...</translation>
    </message>
    <message>
        <source>Running to &apos;%1&apos;...</source>
        <translation>Das Programm läuft bis &apos;%1&apos;...</translation>
    </message>
    <message>
        <source>The start was cancelled.
</source>
        <translation>Der Start wurde abgebrochen.
</translation>
    </message>
    <message>
        <source>Loading &apos;%1&apos;...</source>
        <translation>&apos;%1&apos; wird geladen...</translation>
    </message>
</context>
<context>
    <name>GnuBuild</name>
    <message>
        <source>The name &apos;%1&apos; has a character that ninja does not support.</source>
        <translation>Der Name &apos;%1&apos; enthält ein Zeichen, das ninja nicht unterstützt.</translation>
    </message>
    <message>
        <source>An option has a line break, which ninja does not support: %1</source>
        <translation>Eine Option enthält einen Zeilenumbruch, den ninja nicht unterstützt: %1</translation>
    </message>
    <message>
        <source>The program &apos;%1&apos; was not found. Install the tool chain, or set the option &quot;Tool prefix&quot;.</source>
        <translation>Das Programm &apos;%1&apos; wurde nicht gefunden. Installieren Sie die Werkzeugkette, oder setzen Sie die Option &quot;Präfix der Werkzeuge&quot;.</translation>
    </message>
    <message>
        <source>The program &apos;%1&apos; was not found. Install it, or change the option &quot;Compiler launcher&quot;.</source>
        <translation>Das Programm &apos;%1&apos; wurde nicht gefunden. Installieren Sie es, oder ändern Sie die Option &quot;Starter des Compilers&quot;.</translation>
    </message>
    <message>
        <source>The file &apos;%1&apos; does not exist.</source>
        <translation>Die Datei &apos;%1&apos; gibt es nicht.</translation>
    </message>
    <message>
        <source>The program &apos;ninja&apos; was not found. Builds need it; install it.</source>
        <translation>Das Programm &apos;ninja&apos; wurde nicht gefunden. Builds brauchen es; installieren Sie es.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is used as it is, older than its sources.</source>
        <translation>&apos;%1&apos; wird benutzt, wie es ist, älter als seine Quellen.</translation>
    </message>
    <message>
        <source>Files added to the project &apos;%1&apos;: %2</source>
        <translation>Zum Projekt &apos;%1&apos; hinzugefügte Dateien: %2</translation>
    </message>
    <message>
        <source>Build (%1)</source>
        <translation>Erstellen (%1)</translation>
    </message>
    <message>
        <source>Show Sizes</source>
        <translation>Größen zeigen</translation>
    </message>
    <message>
        <source>Shows on the page &quot;Build&quot; how much flash and RAM the sections of the program take.</source>
        <translation>Zeigt auf der Seite &quot;Erstellen&quot;, wie viel Flash und RAM die Abschnitte des Programms belegen.</translation>
    </message>
    <message>
        <source>Sizes of &apos;%1&apos;:</source>
        <translation>Größen von &apos;%1&apos;:</translation>
    </message>
    <message>
        <source>The project &apos;%1&apos; needs the library project &apos;%2&apos; in the workspace.</source>
        <translation>Das Projekt &apos;%1&apos; braucht das Bibliotheksprojekt &apos;%2&apos; im Arbeitsbereich.</translation>
    </message>
    <message>
        <source>The project has no file that is compiled in the configuration &apos;%1&apos;.</source>
        <translation>Das Projekt hat keine Datei, die in der Konfiguration &apos;%1&apos; übersetzt wird.</translation>
    </message>
    <message>
        <source>The configurations &apos;%1&apos; and &apos;%2&apos; both build the file &apos;%3&apos;. Give one of them another output name.</source>
        <translation>Die Konfigurationen &apos;%1&apos; und &apos;%2&apos; erstellen beide die Datei &apos;%3&apos;. Geben Sie einer von ihnen einen anderen Ausgabenamen.</translation>
    </message>
    <message>
        <source>The workspace has no library project &apos;%1&apos;.</source>
        <translation>Der Arbeitsbereich hat kein Bibliotheksprojekt &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>A quote is not closed in the option &quot;%1&quot;.</source>
        <translation>In der Option &quot;%1&quot; ist ein Anführungszeichen nicht geschlossen.</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Zielsystem</translation>
    </message>
    <message>
        <source>Target type</source>
        <translation>Art der Ausgabe</translation>
    </message>
    <message>
        <source>The output of the build.</source>
        <translation>Das Ergebnis des Builds.</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Static library</source>
        <translation>Statische Bibliothek</translation>
    </message>
    <message>
        <source>Output name</source>
        <translation>Ausgabename</translation>
    </message>
    <message>
        <source>The name of the program or library without its suffix, relative to the configuration&apos;s directory. Empty for the project&apos;s name.</source>
        <translation>Der Name des Programms oder der Bibliothek ohne Endung, relativ zum Verzeichnis der Konfiguration. Leer für den Namen des Projekts.</translation>
    </message>
    <message>
        <source>Build directory</source>
        <translation>Build-Verzeichnis</translation>
    </message>
    <message>
        <source>Contains a directory for each configuration. Relative to the project.</source>
        <translation>Enthält ein Verzeichnis für jede Konfiguration. Relativ zum Projekt.</translation>
    </message>
    <message>
        <source>Load image</source>
        <translation>Ladedatei</translation>
    </message>
    <message>
        <source>A further file that is built from the linked program.</source>
        <translation>Eine weitere Datei, die aus dem gelinkten Programm erzeugt wird.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Intel hex (.hex)</source>
        <translation>Intel-Hex (.hex)</translation>
    </message>
    <message>
        <source>Binary (.bin)</source>
        <translation>Binär (.bin)</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Tool prefix</source>
        <translation>Präfix der Werkzeuge</translation>
    </message>
    <message>
        <source>Prefix of &quot;gcc&quot; in the compiler&apos;s path: a name prefix, a directory that ends in &quot;/&quot;, or both. Empty for %1gcc on the search path.</source>
        <translation>Präfix von &quot;gcc&quot; im Pfad des Compilers: der Anfang eines Namens, ein Verzeichnis, das mit &quot;/&quot; endet, oder beides. Leer für %1gcc im Suchpfad.</translation>
    </message>
    <message>
        <source>Processor options</source>
        <translation>Prozessoroptionen</translation>
    </message>
    <message>
        <source>Options that choose the processor, for compiling and linking. Example: %1</source>
        <translation>Optionen, die den Prozessor wählen, zum Übersetzen und Linken. Beispiel: %1</translation>
    </message>
    <message>
        <source>Parallel jobs</source>
        <translation>Parallele Aufträge</translation>
    </message>
    <message>
        <source>Number of files that are compiled in parallel. 0 for the number that suits the processors of this computer or the hosts of distcc.</source>
        <translation>Anzahl der Dateien, die gleichzeitig übersetzt werden. 0 für die Anzahl, die zu den Prozessoren dieses Rechners oder zu den Rechnern von distcc passt.</translation>
    </message>
    <message>
        <source>Compiler launcher</source>
        <translation>Starter des Compilers</translation>
    </message>
    <message>
        <source>ccache caches results of compilations, distcc compiles on other computers.</source>
        <translation>ccache bewahrt Ergebnisse des Übersetzens auf, distcc übersetzt auf anderen Rechnern.</translation>
    </message>
    <message>
        <source>ccache, then distcc</source>
        <translation>ccache, dann distcc</translation>
    </message>
    <message>
        <source>Hosts for distcc</source>
        <translation>Rechner für distcc</translation>
    </message>
    <message>
        <source>A list as in DISTCC_HOSTS. Example: localhost/2 builder/8. Empty for the value of the environment.</source>
        <translation>Eine Liste wie in DISTCC_HOSTS. Beispiel: localhost/2 builder/8. Leer für den Wert der Umgebung.</translation>
    </message>
    <message>
        <source>Continue after errors</source>
        <translation>Nach Fehlern fortfahren</translation>
    </message>
    <message>
        <source>Compiles all files, even if some fail.</source>
        <translation>Übersetzt alle Dateien, auch wenn einige fehlschlagen.</translation>
    </message>
    <message>
        <source>Show commands</source>
        <translation>Befehle zeigen</translation>
    </message>
    <message>
        <source>Shows each command in full instead of a short description.</source>
        <translation>Zeigt jeden Befehl vollständig statt einer kurzen Beschreibung.</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Optimisation</source>
        <translation>Optimierung</translation>
    </message>
    <message>
        <source>The optimisation level of the compiler.</source>
        <translation>Die Optimierungsstufe des Compilers.</translation>
    </message>
    <message>
        <source>None (-O0)</source>
        <translation>Keine (-O0)</translation>
    </message>
    <message>
        <source>For debugging (-Og)</source>
        <translation>Zum Debuggen (-Og)</translation>
    </message>
    <message>
        <source>Some (-O1)</source>
        <translation>Etwas (-O1)</translation>
    </message>
    <message>
        <source>Speed (-O2)</source>
        <translation>Geschwindigkeit (-O2)</translation>
    </message>
    <message>
        <source>More speed (-O3)</source>
        <translation>Mehr Geschwindigkeit (-O3)</translation>
    </message>
    <message>
        <source>Size (-Os)</source>
        <translation>Größe (-Os)</translation>
    </message>
    <message>
        <source>Debug information</source>
        <translation>Debug-Informationen</translation>
    </message>
    <message>
        <source>The amount of information for the debugger.</source>
        <translation>Der Umfang der Informationen für den Debugger.</translation>
    </message>
    <message>
        <source>None (-g0)</source>
        <translation>Keine (-g0)</translation>
    </message>
    <message>
        <source>Functions (-g1)</source>
        <translation>Funktionen (-g1)</translation>
    </message>
    <message>
        <source>All (-g2)</source>
        <translation>Alle (-g2)</translation>
    </message>
    <message>
        <source>All and macros (-g3)</source>
        <translation>Alle und Makros (-g3)</translation>
    </message>
    <message>
        <source>Remove unused code</source>
        <translation>Unbenutzten Code entfernen</translation>
    </message>
    <message>
        <source>Puts each function and variable into a section of its own, and links only those that are used.</source>
        <translation>Legt jede Funktion und Variable in einen eigenen Abschnitt und linkt nur die benutzten.</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>The warnings of the compiler.</source>
        <translation>Die Warnungen des Compilers.</translation>
    </message>
    <message>
        <source>Nothing (-w)</source>
        <translation>Nichts (-w)</translation>
    </message>
    <message>
        <source>The compiler&apos;s default</source>
        <translation>Vorgabe des Compilers</translation>
    </message>
    <message>
        <source>Most (-Wall)</source>
        <translation>Die meisten (-Wall)</translation>
    </message>
    <message>
        <source>More (-Wall -Wextra)</source>
        <translation>Mehr (-Wall -Wextra)</translation>
    </message>
    <message>
        <source>Warnings are errors</source>
        <translation>Warnungen sind Fehler</translation>
    </message>
    <message>
        <source>A file with a warning is not compiled (-Werror).</source>
        <translation>Eine Datei mit einer Warnung wird nicht übersetzt (-Werror).</translation>
    </message>
    <message>
        <source>Preprocessor</source>
        <translation>Präprozessor</translation>
    </message>
    <message>
        <source>Definitions</source>
        <translation>Definitionen</translation>
    </message>
    <message>
        <source>Macros, separated by &quot;;&quot;. Example: DEBUG;BAUD=115200</source>
        <translation>Makros, getrennt durch &quot;;&quot;. Beispiel: DEBUG;BAUD=115200</translation>
    </message>
    <message>
        <source>Include directories</source>
        <translation>Include-Verzeichnisse</translation>
    </message>
    <message>
        <source>Where headers are searched for. Relative to the project.</source>
        <translation>Wo Header gesucht werden. Relativ zum Projekt.</translation>
    </message>
    <message>
        <source>Language and flags</source>
        <translation>Sprache und Flags</translation>
    </message>
    <message>
        <source>C standard</source>
        <translation>C-Standard</translation>
    </message>
    <message>
        <source>The version of the C language.</source>
        <translation>Die Version der Sprache C.</translation>
    </message>
    <message>
        <source>C++ standard</source>
        <translation>C++-Standard</translation>
    </message>
    <message>
        <source>The version of the C++ language.</source>
        <translation>Die Version der Sprache C++.</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Flags</translation>
    </message>
    <message>
        <source>More flags for all languages, as on a command line. The value of a file replaces that of the project.</source>
        <translation>Weitere Flags für alle Sprachen, wie in einer Befehlszeile. Der Wert einer Datei ersetzt den des Projekts.</translation>
    </message>
    <message>
        <source>Flags for C</source>
        <translation>Flags für C</translation>
    </message>
    <message>
        <source>More flags for C.</source>
        <translation>Weitere Flags für C.</translation>
    </message>
    <message>
        <source>Flags for C++</source>
        <translation>Flags für C++</translation>
    </message>
    <message>
        <source>More flags for C++.</source>
        <translation>Weitere Flags für C++.</translation>
    </message>
    <message>
        <source>Flags for assembler</source>
        <translation>Flags für Assembler</translation>
    </message>
    <message>
        <source>More flags for assembly language.</source>
        <translation>Weitere Flags für Assembler.</translation>
    </message>
    <message>
        <source>This file</source>
        <translation>Diese Datei</translation>
    </message>
    <message>
        <source>Flags for this file</source>
        <translation>Flags für diese Datei</translation>
    </message>
    <message>
        <source>Flags for this file only, added after those of the project.</source>
        <translation>Flags nur für diese Datei, nach denen des Projekts.</translation>
    </message>
    <message>
        <source>Exclude from build</source>
        <translation>Vom Build ausschließen</translation>
    </message>
    <message>
        <source>The file is neither compiled nor linked in this configuration.</source>
        <translation>Die Datei wird in dieser Konfiguration weder übersetzt noch gelinkt.</translation>
    </message>
    <message>
        <source>Linker</source>
        <translation>Linker</translation>
    </message>
    <message>
        <source>Linker script</source>
        <translation>Linkerskript</translation>
    </message>
    <message>
        <source>Defines the memory addresses of code and data.</source>
        <translation>Legt die Speicheradressen von Code und Daten fest.</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Separated by &quot;;&quot;: names such as m for libm.a, or paths of library files.</source>
        <translation>Getrennt durch &quot;;&quot;: Namen wie m für libm.a, oder Pfade von Bibliotheken.</translation>
    </message>
    <message>
        <source>Library directories</source>
        <translation>Bibliotheksverzeichnisse</translation>
    </message>
    <message>
        <source>Where libraries are searched for. Relative to the project.</source>
        <translation>Wo Bibliotheken gesucht werden. Relativ zum Projekt.</translation>
    </message>
    <message>
        <source>Flags for linking</source>
        <translation>Flags zum Linken</translation>
    </message>
    <message>
        <source>More flags for linking, as on a command line. Example: -nostdlib -nostartfiles</source>
        <translation>Weitere Flags zum Linken, wie in einer Befehlszeile. Beispiel: -nostdlib -nostartfiles</translation>
    </message>
    <message>
        <source>Libraries of projects</source>
        <translation>Bibliotheken von Projekten</translation>
    </message>
    <message>
        <source>The shell has the variables OUTPUT, BUILD_DIRECTORY and CONFIGURATION.</source>
        <translation>Die Shell hat die Variablen OUTPUT, BUILD_DIRECTORY und CONFIGURATION.</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Command before the build</source>
        <translation>Befehl vor dem Erstellen</translation>
    </message>
    <message>
        <source>Run by the shell in the project&apos;s directory before each build. </source>
        <translation>Wird vor jedem Build von der Shell im Verzeichnis des Projekts ausgeführt. </translation>
    </message>
    <message>
        <source>Command after the build</source>
        <translation>Befehl nach dem Erstellen</translation>
    </message>
    <message>
        <source>Run by the shell in the project&apos;s directory when the output has changed. </source>
        <translation>Wird von der Shell im Verzeichnis des Projekts ausgeführt, wenn sich die Ausgabe geändert hat. </translation>
    </message>
    <message>
        <source>Error pattern</source>
        <translation>Fehlermuster</translation>
    </message>
    <message>
        <source>A regular expression for output lines that refer to a source line: &quot;(file)&quot; and &quot;(line)&quot; match its path and number.</source>
        <translation>Ein regulärer Ausdruck für Ausgabezeilen, die auf eine Quellzeile verweisen: &quot;(file)&quot; und &quot;(line)&quot; passen auf deren Pfad und Nummer.</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Find files on opening</source>
        <translation>Dateien beim Öffnen suchen</translation>
    </message>
    <message>
        <source>Adds new files below the project&apos;s directory when the workspace is opened.</source>
        <translation>Fügt neue Dateien unterhalb des Verzeichnisses des Projekts hinzu, wenn der Arbeitsbereich geöffnet wird.</translation>
    </message>
    <message>
        <source>Extensions to find</source>
        <translation>Gesuchte Endungen</translation>
    </message>
    <message>
        <source>Extensions of the files that belong to the project, separated by &quot;;&quot;.</source>
        <translation>Endungen der Dateien, die zum Projekt gehören, getrennt durch &quot;;&quot;.</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>Run on opening</source>
        <translation>Beim Öffnen ausführen</translation>
    </message>
    <message>
        <source>Runs the script after the workspace was opened.</source>
        <translation>Führt das Skript aus, nachdem der Arbeitsbereich geöffnet wurde.</translation>
    </message>
    <message>
        <source>flash, RAM</source>
        <translation>Flash, RAM</translation>
    </message>
    <message>
        <source>flash</source>
        <translation>Flash</translation>
    </message>
    <message>
        <source>RAM</source>
        <translation>RAM</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Abschnitt</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Flash: %1 bytes, RAM: %2 bytes</source>
        <translation>Flash: %1 Bytes, RAM: %2 Bytes</translation>
    </message>
    <message>
        <source>The last command has not ended yet. The new one is not carried out.</source>
        <translation>Der letzte Befehl ist noch nicht beendet. Der neue wird nicht ausgeführt.</translation>
    </message>
    <message>
        <source>Names of library projects in the workspace, separated by &quot;;&quot;. They are built first, in the configuration of the same name, and linked, together with the libraries that they use.</source>
        <translation>Namen von Bibliotheksprojekten im Arbeitsbereich, getrennt durch &quot;;&quot;. Sie werden zuerst erstellt, in der Konfiguration desselben Namens, und gelinkt, zusammen mit den Bibliotheken, die sie benutzen.</translation>
    </message>
    <message>
        <source>EEPROM</source>
        <translation>EEPROM</translation>
    </message>
    <message>
        <source>fuses</source>
        <translation>Fuses</translation>
    </message>
    <message>
        <source>%1: %2 of %3 bytes (%4 %)</source>
        <translation>%1: %2 von %3 Bytes (%4 %)</translation>
    </message>
    <message>
        <source>Checking whether &apos;%1&apos; is up to date...</source>
        <translation>Es wird geprüft, ob &apos;%1&apos; auf dem neuesten Stand ist...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The name &apos;%1&apos; has a character that make does not support.</source>
        <translation>Der Name &apos;%1&apos; enthält ein Zeichen, das make nicht unterstützt.</translation>
    </message>
    <message>
        <source>An option has a line break, which make does not support: %1</source>
        <translation>Eine Option enthält einen Zeilenumbruch, den make nicht unterstützt: %1</translation>
    </message>
    <message>
        <source>A Makefile cannot have a target with the name &apos;%1&apos;. Rename the configuration.</source>
        <translation>Ein Makefile kann kein Ziel mit dem Namen &apos;%1&apos; haben. Benennen Sie die Konfiguration um.</translation>
    </message>
</context>
<context>
    <name>GnuProject</name>
    <message>
        <source>The project &apos;%1&apos; has no configuration &apos;%2&apos;.</source>
        <translation>Das Projekt &apos;%1&apos; hat keine Konfiguration &apos;%2&apos;.</translation>
    </message>
    <message>
        <source>The projects &apos;%1&apos; and &apos;%2&apos; both build in the directory &apos;%3&apos;. Give one of them another build directory.</source>
        <translation>Die Projekte &apos;%1&apos; und &apos;%2&apos; werden beide im Verzeichnis &apos;%3&apos; erstellt. Geben Sie einem von ihnen ein anderes Build-Verzeichnis.</translation>
    </message>
    <message>
        <source>The projects &apos;%1&apos; and &apos;%2&apos; both build the file &apos;%3&apos;. Give one of them another output name.</source>
        <translation>Die Projekte &apos;%1&apos; und &apos;%2&apos; erstellen beide die Datei &apos;%3&apos;. Geben Sie einem von ihnen einen anderen Ausgabenamen.</translation>
    </message>
    <message>
        <source>The configuration &apos;%1&apos; of the project &apos;%2&apos; is left out.</source>
        <translation>Die Konfiguration &apos;%1&apos; des Projekts &apos;%2&apos; wird ausgelassen.</translation>
    </message>
</context>
<context>
    <name>GuardedDocument</name>
    <message>
        <source>The following file could not be opened:
%1</source>
        <translation>Die folgende Datei konnte nicht geöffnet werden:
%1</translation>
    </message>
    <message>
        <source>The following file could not be saved:
%1</source>
        <translation>Die folgende Datei konnte nicht gespeichert werden:
%1</translation>
    </message>
</context>
<context>
    <name>HelpBrowser</name>
    <message>
        <source>This page is too large to be shown here.</source>
        <translation>Diese Seite ist zu groß, um hier gezeigt zu werden.</translation>
    </message>
</context>
<context>
    <name>HelpCommands</name>
    <message>
        <source>The list of recent workspaces is empty.</source>
        <translation>Die Liste der letzten Arbeitsbereiche ist leer.</translation>
    </message>
    <message>
        <source>The examples are in a folder that you cannot write to, so they cannot be built there:
%1

Do you want to copy them to &apos;%2&apos; and open the copy?</source>
        <translation>Die Beispiele liegen in einem Ordner, in den Sie nicht schreiben können, und können dort deshalb nicht gebaut werden:
%1

Möchten Sie sie nach &apos;%2&apos; kopieren und die Kopie öffnen?</translation>
    </message>
    <message>
        <source>Copying the examples...</source>
        <translation>Kopiere die Beispiele...</translation>
    </message>
    <message>
        <source>Could not read from file &apos;%1&apos;.

The examples have not been copied.</source>
        <translation>Die Datei &apos;%1&apos; konnte nicht gelesen werden.

Die Beispiele wurden nicht kopiert.</translation>
    </message>
    <message>
        <source>Could not write to file &apos;%1&apos;.

The examples have not been copied.</source>
        <translation>Die Datei &apos;%1&apos; konnte nicht geschrieben werden.

Die Beispiele wurden nicht kopiert.</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Help page</source>
        <translation>Hilfeseite</translation>
    </message>
</context>
<context>
    <name>HelpDocument</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>The following file does not exist:
%1

Do you want to create it?</source>
        <translation>Die folgende Datei gibt es nicht:
%1

Möchten Sie sie anlegen?</translation>
    </message>
    <message>
        <source>The following file could not be opened:
%1</source>
        <translation>Die folgende Datei konnte nicht geöffnet werden:
%1</translation>
    </message>
    <message>
        <source>The following file could not be written:
%1

Please check that this file is not read-only and you have permission to write to it.</source>
        <translation>Die folgende Datei konnte nicht geschrieben werden:
%1

Bitte prüfen Sie, dass diese Datei nicht schreibgeschützt ist und Sie in sie schreiben dürfen.</translation>
    </message>
</context>
<context>
    <name>HelpSearchDialogBase</name>
    <message>
        <source>Search Help</source>
        <translation>Hilfe durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Pages that have all of these words:</source>
        <translation>&amp;Seiten, die alle diese Wörter enthalten:</translation>
    </message>
    <message>
        <source>* stands for any characters and ? for one</source>
        <translation>* steht für beliebige Zeichen, ? für eines</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>HelpView</name>
    <message>
        <source>Help page</source>
        <translation>Hilfeseite</translation>
    </message>
    <message>
        <source>This link cannot be followed:
%1</source>
        <translation>Diesem Verweis kann nicht gefolgt werden:
%1</translation>
    </message>
</context>
<context>
    <name>HelpWidget</name>
    <message>
        <source>Help Documents</source>
        <translation>Hilfedokumente</translation>
    </message>
    <message>
        <source>The index file could not be generated.</source>
        <translation>Die Indexdatei konnte nicht erzeugt werden.</translation>
    </message>
    <message>
        <source>The search results file could not be written:

%1</source>
        <translation>Die Datei der Suchergebnisse konnte nicht geschrieben werden:

%1</translation>
    </message>
    <message>
        <source>Building full-text index. Please wait...</source>
        <translation>Volltextindex wird erstellt. Bitte warten...</translation>
    </message>
</context>
<context>
    <name>HelpWidgetBase</name>
    <message>
        <source>&amp;Search:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Los</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
</context>
<context>
    <name>IDEApplication</name>
    <message>
        <source>%1 (Multi-processor support enabled)</source>
        <translation>%1 (mit Unterstützung mehrerer Prozessoren)</translation>
    </message>
</context>
<context>
    <name>IHostImpl</name>
    <message>
        <source>error</source>
        <translation>error</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>warning</translation>
    </message>
    <message>
        <source>note</source>
        <translation>note</translation>
    </message>
</context>
<context>
    <name>KeySets</name>
    <message>
        <source>Keys of current code editors: Ctrl+K begins many</source>
        <translation>Tasten verbreiteter Code-Editoren: Strg+K leitet viele ein</translation>
    </message>
    <message>
        <source>Keys of editors in a terminal: Ctrl+X begins many</source>
        <translation>Tasten von Editoren im Terminal: Strg+X leitet viele ein</translation>
    </message>
</context>
<context>
    <name>LargeTextBar</name>
    <message>
        <source>F&amp;ollow the end</source>
        <translation>Dem Ende f&amp;olgen</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>Suchen...</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Shows what is written to the file, as it is written</source>
        <translation>Zeigt, was in die Datei geschrieben wird, während es geschrieben wird</translation>
    </message>
    <message>
        <source>%1, %2 lines</source>
        <translation>%1, %2 Zeilen</translation>
    </message>
    <message>
        <source>%1, counting lines: %2 %</source>
        <translation>%1, Zeilen werden gezählt: %2 %</translation>
    </message>
    <message>
        <source>The file has grown by %1.</source>
        <translation>Die Datei ist um %1 gewachsen.</translation>
    </message>
    <message>
        <source>The file has become shorter.</source>
        <translation>Die Datei ist kürzer geworden.</translation>
    </message>
    <message>
        <source>The file has been changed.</source>
        <translation>Die Datei wurde geändert.</translation>
    </message>
    <message>
        <source>The file has been replaced by another one.</source>
        <translation>Die Datei wurde durch eine andere ersetzt.</translation>
    </message>
    <message>
        <source>The file has been deleted or moved.</source>
        <translation>Die Datei wurde gelöscht oder verschoben.</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>Die Datei kann nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>LargeTextDocumentTemplate</name>
    <message>
        <source>The file is too large to open for editing.

It will be opened read-only.</source>
        <translation>Die Datei ist zu groß, um sie zum Bearbeiten zu öffnen.

Sie wird nur zum Lesen geöffnet.</translation>
    </message>
    <message>
        <source>File Open</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>The file contains NUL bytes, so it is probably not a text.

It will be opened read-only.</source>
        <translation>Die Datei enthält NUL-Bytes und ist daher wahrscheinlich kein Text.

Sie wird schreibgeschützt geöffnet.</translation>
    </message>
</context>
<context>
    <name>LargeTextFindBar</name>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß- und Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>&amp;Whole words</source>
        <translation>Ganze &amp;Wörter</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Counting...</source>
        <translation>Zählen...</translation>
    </message>
    <message>
        <source>Find in the file</source>
        <translation>In der Datei suchen</translation>
    </message>
    <message>
        <source>Searching...</source>
        <translation>Suche läuft...</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Not found so far</source>
        <translation>Bisher nicht gefunden</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1, past the end of the file</source>
        <translation>%1, über das Ende der Datei hinaus</translation>
    </message>
    <message>
        <source>%1 so far</source>
        <translation>%1 bisher</translation>
    </message>
</context>
<context>
    <name>LargeTextView</name>
    <message>
        <source>Text of %1</source>
        <translation>Text von %1</translation>
    </message>
    <message>
        <source>The selection is too large to be copied. Up to %1 characters can be copied.</source>
        <translation>Die Auswahl ist zu groß zum Kopieren. Es können bis zu %1 Zeichen kopiert werden.</translation>
    </message>
</context>
<context>
    <name>LineCoverage</name>
    <message>
        <source>Coverage</source>
        <translation>Abdeckung</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;toppen</translation>
    </message>
</context>
<context>
    <name>LineEditor</name>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
</context>
<context>
    <name>LiveDock</name>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>&amp;Live</source>
        <translation>&amp;Live</translation>
    </message>
    <message>
        <source>Shows or hides the values of all processors over time</source>
        <translation>Zeigt oder verbirgt die Werte aller Prozessoren im Lauf der Zeit</translation>
    </message>
</context>
<context>
    <name>LiveList</name>
    <message>
        <source>not supported</source>
        <translation>nicht unterstützt</translation>
    </message>
    <message>
        <source>not running</source>
        <translation>läuft nicht</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>The debugger of this project cannot read the target while the program runs.</source>
        <translation>Der Debugger dieses Projekts kann das Zielsystem nicht lesen, während das Programm läuft.</translation>
    </message>
    <message>
        <source>There is no debug session, or its target cannot be read while the program runs.</source>
        <translation>Es gibt keine Debug-Sitzung, oder ihr Zielsystem kann nicht gelesen werden, während das Programm läuft.</translation>
    </message>
    <message>
        <source>Only global and static variables with a simple type can be read while the program runs. One that was added while it runs may have to wait for the next pause.</source>
        <translation>Nur globale und statische Variablen mit einem einfachen Typ können gelesen werden, während das Programm läuft. Eine, die währenddessen hinzugefügt wurde, muss vielleicht bis zum nächsten Anhalten warten.</translation>
    </message>
    <message>
        <source>Live variables</source>
        <translation>Live-Variablen</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Processor</source>
        <translation>Prozessor</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Remove Variable</source>
        <translation>Variable entfernen</translation>
    </message>
</context>
<context>
    <name>LiveRecorder</name>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
</context>
<context>
    <name>LiveWindow</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>Reads the targets while their programs run, without stopping them.</source>
        <translation>Liest die Zielsysteme, während ihre Programme laufen, ohne sie anzuhalten.</translation>
    </message>
    <message>
        <source>The processor of a new variable</source>
        <translation>Der Prozessor einer neuen Variable</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Adds the variable to the list.</source>
        <translation>Fügt die Variable zur Liste hinzu.</translation>
    </message>
    <message>
        <source>Holds the plot while recording goes on.</source>
        <translation>Hält das Diagramm an, während die Aufzeichnung weitergeht.</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>The values on screen decide the range.</source>
        <translation>Die gezeigten Werte bestimmen den Bereich.</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Begins a new recording.</source>
        <translation>Beginnt eine neue Aufzeichnung.</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Writes the recording to a file of comma-separated values.</source>
        <translation>Schreibt die Aufzeichnung in eine Datei mit durch Kommas getrennten Werten.</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Processor</source>
        <translation>Prozessor</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Time:</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Von:</translation>
    </message>
    <message>
        <source>To:</source>
        <translation>Bis:</translation>
    </message>
    <message>
        <source>The list cannot have more than %1 variables.</source>
        <translation>Die Liste kann nicht mehr als %1 Variablen haben.</translation>
    </message>
    <message>
        <source>Save Recording</source>
        <translation>Aufzeichnung speichern</translation>
    </message>
    <message>
        <source>Comma-Separated Values (*.csv);;All Files (*.*)</source>
        <translation>Durch Kommas getrennte Werte (*.csv);;Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>The recording was written to &apos;%1&apos;.</source>
        <translation>Die Aufzeichnung wurde in &apos;%1&apos; geschrieben.</translation>
    </message>
    <message>
        <source>The recording could not be written to &apos;%1&apos;.</source>
        <translation>Die Aufzeichnung konnte nicht in &apos;%1&apos; geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>LoadingLabel</name>
    <message>
        <source>Loading &apos;%1&apos;... %2 %</source>
        <translation>&apos;%1&apos; wird geladen... %2 %</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>file</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Removed</source>
        <translation>Entfernt</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
    <message>
        <source>Multiple</source>
        <translation>Mehrere</translation>
    </message>
    <message>
        <source>&lt;b&gt;Breakpoint status&lt;/b&gt;&lt;br&gt;</source>
        <translation>&lt;b&gt;Zustand des Haltepunkts&lt;/b&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source> Ln %1, Col %2</source>
        <translation> Ze %1, Sp %2</translation>
    </message>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Python Output</source>
        <translation>Python-Ausgabe</translation>
    </message>
</context>
<context>
    <name>MakefileCommand</name>
    <message>
        <source>The file %1 exists already, and was not generated from this project.

Do you want to overwrite it?</source>
        <translation>Die Datei %1 existiert bereits und wurde nicht aus diesem Projekt erzeugt.

Möchten Sie sie überschreiben?</translation>
    </message>
    <message>
        <source>%1 is up to date.
</source>
        <translation>%1 ist aktuell.
</translation>
    </message>
    <message>
        <source>The file %1 could not be written.</source>
        <translation>Die Datei %1 konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>%1 was written.
</source>
        <translation>%1 wurde geschrieben.
</translation>
    </message>
    <message>
        <source>No Makefile can be generated.

The build environment of the project does not support it.</source>
        <translation>Es kann kein Makefile erzeugt werden.

Die Build-Umgebung des Projekts unterstützt das nicht.</translation>
    </message>
    <message>
        <source>Makefile generated</source>
        <translation>Makefile erzeugt</translation>
    </message>
    <message>
        <source>Not all Makefiles were generated</source>
        <translation>Nicht alle Makefiles wurden erzeugt</translation>
    </message>
</context>
<context>
    <name>MemoryPicture</name>
    <message>
        <source>Memory Picture</source>
        <translation>Speicherbild</translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation>&amp;Adresse:</translation>
    </message>
    <message>
        <source>number or expression, such as &amp;history</source>
        <translation>Zahl oder Ausdruck, etwa &amp;history</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Pixels:</source>
        <translation>&amp;Pixel:</translation>
    </message>
    <message>
        <source>1 bit</source>
        <translation>1 Bit</translation>
    </message>
    <message>
        <source>8 bits, grey</source>
        <translation>8 Bit, grau</translation>
    </message>
    <message>
        <source>16 bits, RGB 565</source>
        <translation>16 Bit, RGB 565</translation>
    </message>
    <message>
        <source>32 bits, RGB 888</source>
        <translation>32 Bit, RGB 888</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>An&amp;zeigen</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
</context>
<context>
    <name>MemoryWindow</name>
    <message>
        <source>Write Changes</source>
        <translation>Änderungen schreiben</translation>
    </message>
    <message>
        <source>Read Memory</source>
        <translation>Speicher lesen</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Position in the region</source>
        <translation>Stelle im Bereich</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <source>Region:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>&amp;Byte View</source>
        <translation>&amp;Byteweise</translation>
    </message>
    <message>
        <source>16-bit Word View</source>
        <translation>16-Bit-Wörter</translation>
    </message>
    <message>
        <source>24-bit Word View</source>
        <translation>24-Bit-Wörter</translation>
    </message>
    <message>
        <source>32-bit Word View</source>
        <translation>32-Bit-Wörter</translation>
    </message>
    <message>
        <source>An address is a number like 0x1000. Watch &amp;name for that of a name.</source>
        <translation>Eine Adresse ist eine Zahl wie 0x1000. Die eines Namens zeigt der Ausdruck &amp;Name.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not an address: the start of the region is shown.</source>
        <translation>&apos;%1&apos; ist keine Adresse: der Anfang des Bereichs wird gezeigt.</translation>
    </message>
</context>
<context>
    <name>MiConnection</name>
    <message>
        <source>&apos;%1&apos; does not answer like gdb.</source>
        <translation>&apos;%1&apos; antwortet nicht wie gdb.</translation>
    </message>
    <message>
        <source>gdb is not running.</source>
        <translation>gdb läuft nicht.</translation>
    </message>
    <message>
        <source>gdb does not answer.</source>
        <translation>gdb antwortet nicht.</translation>
    </message>
    <message>
        <source>gdb ended before it answered &apos;%1&apos;.</source>
        <translation>gdb endete, bevor es &apos;%1&apos; beantwortet hat.</translation>
    </message>
    <message>
        <source>gdb did not answer &apos;%1&apos; within %2 ms.</source>
        <translation>gdb hat &apos;%1&apos; nicht innerhalb von %2 ms beantwortet.</translation>
    </message>
    <message>
        <source>gdb ended.</source>
        <translation>gdb hat geendet.</translation>
    </message>
</context>
<context>
    <name>MorePage</name>
    <message>
        <source>All computers</source>
        <translation>Alle Rechner</translation>
    </message>
    <message>
        <source>This computer only</source>
        <translation>Nur dieser Rechner</translation>
    </message>
    <message>
        <source>The network of &quot;%1&quot;</source>
        <translation>Das Netz von &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Virtual Environment</source>
        <translation>Virtuelle Umgebung</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a virtual environment of Python: it has no file pyvenv.cfg.</source>
        <translation>&quot;%1&quot; ist keine virtuelle Umgebung von Python: Es fehlt die Datei pyvenv.cfg.</translation>
    </message>
</context>
<context>
    <name>MorePageBase</name>
    <message>
        <source>More</source>
        <translation>Weiteres</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Show line numbers</source>
        <translation>Zeilennummern zeigen</translation>
    </message>
    <message>
        <source>Highlight the line of the cursor</source>
        <translation>Zeile des Cursors hervorheben</translation>
    </message>
    <message>
        <source>Size of the text in documents:</source>
        <translation>Größe des Textes in Dokumenten:</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>Start and scripts of workspaces</source>
        <translation>Start und Skripte von Arbeitsbereichen</translation>
    </message>
    <message>
        <source>Language, from the next start on:</source>
        <translation>Sprache, ab dem nächsten Start:</translation>
    </message>
    <message>
        <source>Show the first page of the help when Varnel starts</source>
        <translation>Beim Start von Varnel die erste Seite der Hilfe zeigen</translation>
    </message>
    <message>
        <source>Ask before the scripts of a folder run for the first time</source>
        <translation>Fragen, bevor die Skripte eines Ordners zum ersten Mal laufen</translation>
    </message>
    <message>
        <source>Folders with an answer</source>
        <translation>Ordner mit einer Antwort</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Scripts run</source>
        <translation>Skripte laufen</translation>
    </message>
    <message>
        <source>Varnel asks again when a workspace of the folder is opened.</source>
        <translation>Varnel fragt wieder, wenn ein Arbeitsbereich des Ordners geöffnet wird.</translation>
    </message>
    <message>
        <source>Forget</source>
        <translation>Vergessen</translation>
    </message>
    <message>
        <source>Python</source>
        <translation>Python</translation>
    </message>
    <message>
        <source>Virtual environment:</source>
        <translation>Virtuelle Umgebung:</translation>
    </message>
    <message>
        <source>A directory made by &quot;python3 -m venv&quot;. Scripts can import its packages.</source>
        <translation>Ein mit &quot;python3 -m venv&quot; angelegtes Verzeichnis. Skripte können dessen Pakete importieren.</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>A change takes effect at the next start.</source>
        <translation>Eine Änderung wirkt ab dem nächsten Start.</translation>
    </message>
    <message>
        <source>Automation server</source>
        <translation>Automatisierungsserver</translation>
    </message>
    <message>
        <source>Accept connections from:</source>
        <translation>Verbindungen annehmen von:</translation>
    </message>
    <message>
        <source>The server needs the option &quot;-r&quot;. A change takes effect at the next start.</source>
        <translation>Der Server braucht die Option &quot;-r&quot;. Eine Änderung wirkt ab dem nächsten Start.</translation>
    </message>
</context>
<context>
    <name>NamedFiles</name>
    <message>
        <source>Which of these do you want to open?</source>
        <translation>Was davon möchten Sie öffnen?</translation>
    </message>
    <message>
        <source>There is no workspace and no project in the folder &apos;%1&apos;.

Do you want to create a project with the source files below it?</source>
        <translation>Im Ordner &apos;%1&apos; gibt es weder einen Arbeitsbereich noch ein Projekt.

Möchten Sie ein Projekt mit den Quelldateien darunter anlegen?</translation>
    </message>
    <message>
        <source>The project could not be created.

Please make sure that the folder &apos;%1&apos; can be written.</source>
        <translation>Das Projekt konnte nicht angelegt werden.

Bitte sorgen Sie dafür, dass in den Ordner &apos;%1&apos; geschrieben werden kann.</translation>
    </message>
    <message>
        <source>The source files of the folder are searched for...</source>
        <translation>Die Quelldateien des Ordners werden gesucht...</translation>
    </message>
</context>
<context>
    <name>NativeTarget</name>
    <message>
        <source>No terminal is available for the program.</source>
        <translation>Für das Programm ist kein Terminal verfügbar.</translation>
    </message>
    <message>
        <source>Cannot attach to process %1: %2</source>
        <translation>Mit dem Prozess %1 kann nicht verbunden werden: %2</translation>
    </message>
    <message>
        <source>A program that was attached to cannot be started again.</source>
        <translation>Ein Programm, mit dem verbunden wurde, kann nicht neu gestartet werden.</translation>
    </message>
</context>
<context>
    <name>NativeTerminal</name>
    <message>
        <source>[part of the input was lost]
</source>
        <translation>[ein Teil der Eingabe ging verloren]
</translation>
    </message>
</context>
<context>
    <name>Navigator</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Filter of the projects</source>
        <translation>Filter der Projekte</translation>
    </message>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>Kein Treffer</translation>
    </message>
</context>
<context>
    <name>NewConfigurationDialog</name>
    <message>
        <source>Please enter a name for the new configuration.</source>
        <translation>Bitte geben Sie einen Namen für die neue Konfiguration ein.</translation>
    </message>
    <message>
        <source>A configuration with that name already exists.</source>
        <translation>Eine Konfiguration mit diesem Namen gibt es bereits.</translation>
    </message>
</context>
<context>
    <name>NewConfigurationDialogBase</name>
    <message>
        <source>New Configuration</source>
        <translation>Neue Konfiguration</translation>
    </message>
    <message>
        <source>Name for new configuration:</source>
        <translation>Name der neuen Konfiguration:</translation>
    </message>
    <message>
        <source>Base configuration on:</source>
        <translation>Nach dem Vorbild von:</translation>
    </message>
    <message>
        <source>Configurations</source>
        <translation>Konfigurationen</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>NewFileDialog</name>
    <message>
        <source>File will be created at %1</source>
        <translation>Datei wird angelegt: %1</translation>
    </message>
    <message>
        <source>Choose Directory</source>
        <translation>Verzeichnis wählen</translation>
    </message>
    <message>
        <source>Please enter a name for the new file.</source>
        <translation>Bitte geben Sie einen Namen für die neue Datei ein.</translation>
    </message>
    <message>
        <source>Please enter a location for the new file.</source>
        <translation>Bitte geben Sie einen Ort für die neue Datei an.</translation>
    </message>
    <message>
        <source>A file with that name already exist. Do you want to overwrite it with the new file?</source>
        <translation>Eine Datei mit diesem Namen gibt es bereits. Möchten Sie sie durch die neue Datei überschreiben?</translation>
    </message>
</context>
<context>
    <name>NewFileDialogBase</name>
    <message>
        <source>New File</source>
        <translation>Neue Datei</translation>
    </message>
    <message>
        <source>Select a file type:</source>
        <translation>Dateityp wählen:</translation>
    </message>
    <message>
        <source>Kinds of files</source>
        <translation>Arten von Dateien</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>&lt;enter name&gt;</source>
        <translation>&lt;Name eingeben&gt;</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Add file to project</source>
        <translation>Datei zum Projekt hinzufügen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>NewProjectDialog</name>
    <message>
        <source>No templates installed</source>
        <translation>Keine Vorlagen installiert</translation>
    </message>
    <message>
        <source>Recently used</source>
        <translation>Zuletzt benutzt</translation>
    </message>
    <message>
        <source>%1 project template</source>
        <translation>Projektvorlage %1</translation>
    </message>
    <message>
        <source>Project will be created at %1</source>
        <translation>Projekt wird angelegt: %1</translation>
    </message>
    <message>
        <source>Choose Directory</source>
        <translation>Verzeichnis wählen</translation>
    </message>
    <message>
        <source>Please select a project type.</source>
        <translation>Bitte wählen Sie einen Projekttyp.</translation>
    </message>
    <message>
        <source>Please enter a name for the new project.</source>
        <translation>Bitte geben Sie einen Namen für das neue Projekt ein.</translation>
    </message>
    <message>
        <source>A folder with that name already exists.</source>
        <translation>Einen Ordner mit diesem Namen gibt es bereits.</translation>
    </message>
    <message>
        <source>Please enter a location for the new project.</source>
        <translation>Bitte geben Sie einen Ort für das neue Projekt an.</translation>
    </message>
    <message>
        <source>The folder does not exist:

%1

Do you want to create it?</source>
        <translation>Den Ordner gibt es nicht:

%1

Möchten Sie ihn anlegen?</translation>
    </message>
    <message>
        <source>Could not create the project folder &apos;%1&apos;.</source>
        <translation>Der Projektordner &apos;%1&apos; konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>The name of a project cannot be &apos;.&apos; or &apos;..&apos;, and cannot contain &apos;/&apos; or control characters.</source>
        <translation>Der Name eines Projekts kann nicht &apos;.&apos; oder &apos;..&apos; sein und weder &apos;/&apos; noch Steuerzeichen enthalten.</translation>
    </message>
</context>
<context>
    <name>NewProjectDialogBase</name>
    <message>
        <source>New Project</source>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>Select a project type:</source>
        <translation>Projekttyp wählen:</translation>
    </message>
    <message>
        <source>Folders of templates</source>
        <translation>Ordner von Vorlagen</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Vorlagen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>&lt;enter name&gt;</source>
        <translation>&lt;Name eingeben&gt;</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Create project folder</source>
        <translation>Projektordner anlegen</translation>
    </message>
    <message>
        <source>Create new workspace</source>
        <translation>Neuen Arbeitsbereich anlegen</translation>
    </message>
    <message>
        <source>Add to current workspace</source>
        <translation>Zum Arbeitsbereich hinzufügen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>NextStatement</name>
    <message>
        <source>Cannot display next statment.

No corresponding source file found.</source>
        <translation>Die nächste Anweisung kann nicht angezeigt werden.

Es wurde keine zugehörige Quelldatei gefunden.</translation>
    </message>
    <message>
        <source>The next statement cannot be set here.

Please see Debug Output window for details.</source>
        <translation>Die nächste Anweisung kann hier nicht gesetzt werden.

Einzelheiten stehen im Ausgabefenster auf der Seite &quot;Debuggen&quot;.</translation>
    </message>
    <message>
        <source>The next statement cannot be set.

The execution environment does not support it.</source>
        <translation>Die nächste Anweisung kann nicht gesetzt werden.

Die Ausführungsumgebung unterstützt es nicht.</translation>
    </message>
</context>
<context>
    <name>OptionsCommands</name>
    <message>
        <source>Build</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debuggen</translation>
    </message>
</context>
<context>
    <name>OptionsDialog</name>
    <message>
        <source>The default formats cannot be read. The formats stay as they are.</source>
        <translation>Die Standardformate können nicht gelesen werden. Die Formate bleiben, wie sie sind.</translation>
    </message>
</context>
<context>
    <name>OptionsDialogBase</name>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Workspace style</source>
        <translation>Stil des Arbeitsbereichs</translation>
    </message>
    <message>
        <source>Tabbed windows style</source>
        <translation>Fenster in Registerkarten</translation>
    </message>
    <message>
        <source>Multiple Document Interface (MDI) style</source>
        <translation>Freie Fenster (MDI)</translation>
    </message>
    <message>
        <source>&lt;br&gt;Note that changes will not take effect until you restart the application.</source>
        <translation>&lt;br&gt;Hinweis: Änderungen wirken erst nach einem Neustart des Programms.</translation>
    </message>
    <message>
        <source>Tabs</source>
        <translation>Tabulatoren</translation>
    </message>
    <message>
        <source>Tab size:</source>
        <translation>Tabulatorbreite:</translation>
    </message>
    <message>
        <source>Insert spaces</source>
        <translation>Leerzeichen einfügen</translation>
    </message>
    <message>
        <source>Keep tabs</source>
        <translation>Tabulatoren behalten</translation>
    </message>
    <message>
        <source>Auto indentation</source>
        <translation>Automatische Einrückung</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Simple</source>
        <translation>Einfach</translation>
    </message>
    <message>
        <source>Smart</source>
        <translation>Intelligent</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Show settings for:</source>
        <translation>Einstellungen für:</translation>
    </message>
    <message>
        <source>Use &amp;Defaults</source>
        <translation>&amp;Standardwerte</translation>
    </message>
    <message>
        <source>Font:</source>
        <translation>Schrift:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Display items</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Type:</source>
        <translation>Art:</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Foreground color:</source>
        <translation>Vordergrundfarbe:</translation>
    </message>
    <message>
        <source>Background colour:</source>
        <translation>Hintergrundfarbe:</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Sample:</source>
        <translation>Muster:</translation>
    </message>
    <message>
        <source>AaBbCcXxYyZz</source>
        <translation>AaBbCcÄäÖöÜüß</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Splash screen</source>
        <translation>Startbild</translation>
    </message>
    <message>
        <source>Disable splash screen</source>
        <translation>Startbild abschalten</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>OutputPage</name>
    <message>
        <source>1 error</source>
        <translation>1 Fehler</translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation>%1 Fehler</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 Warnung</translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation>%1 Warnungen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Lookup source line</source>
        <translation>Quellzeile aufsuchen</translation>
    </message>
</context>
<context>
    <name>OutputWindow</name>
    <message>
        <source>Build</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debuggen</translation>
    </message>
    <message>
        <source>Find In Files</source>
        <translation>In Dateien suchen</translation>
    </message>
    <message>
        <source>Command Window</source>
        <translation>Befehlsfenster</translation>
    </message>
    <message>
        <source>Stop Script</source>
        <translation>Skript anhalten</translation>
    </message>
    <message>
        <source>Interrupts the statement that runs in the Command Window</source>
        <translation>Unterbricht die Anweisung, die in der Befehlszeile läuft</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
</context>
<context>
    <name>PeripheralAccess</name>
    <message>
        <source>It is not a file.</source>
        <translation>Sie ist keine Datei.</translation>
    </message>
    <message>
        <source>The device description &apos;%1&apos; cannot be read: %2
</source>
        <translation>Die Gerätebeschreibung &apos;%1&apos; kann nicht gelesen werden: %2
</translation>
    </message>
    <message>
        <source>The register changes when read, so it is read only on request.</source>
        <translation>Das Register ändert sich durch das Lesen, darum wird es nur auf Wunsch gelesen.</translation>
    </message>
</context>
<context>
    <name>PeripheralWidget</name>
    <message>
        <source>Peripheral Register</source>
        <translation>Peripherieregister</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Peripherals</source>
        <translation>Peripherie</translation>
    </message>
    <message>
        <source>not read</source>
        <translation>nicht gelesen</translation>
    </message>
    <message>
        <source>Read now</source>
        <translation>Jetzt lesen</translation>
    </message>
    <message>
        <source>write only</source>
        <translation>nur schreibbar</translation>
    </message>
</context>
<context>
    <name>PluginBinder</name>
    <message>
        <source>The workspace contains a project that requires the %1 build environment, which is not installed.
You will not be able to build the project.</source>
        <translation>Der Arbeitsbereich enthält ein Projekt, das die Build-Umgebung %1 braucht. Sie ist nicht installiert.
Sie können das Projekt nicht erstellen.</translation>
    </message>
    <message>
        <source>The build system could not be initialised.

Please see Build Output window for details.</source>
        <translation>Das Build-System konnte nicht vorbereitet werden.

Einzelheiten stehen im Ausgabefenster auf der Seite &quot;Erstellen&quot;.</translation>
    </message>
    <message>
        <source>The workspace contains a project that requires the %1 execution environment, which is not installed.
You will not be able to debug or run the project.</source>
        <translation>Der Arbeitsbereich enthält ein Projekt, das die Ausführungsumgebung %1 braucht. Sie ist nicht installiert.
Sie können das Projekt weder debuggen noch ausführen.</translation>
    </message>
    <message>
        <source>The debugger could not be initialised.

Please see Debug Output window for details.</source>
        <translation>Der Debugger konnte nicht vorbereitet werden.

Einzelheiten stehen im Ausgabefenster auf der Seite &quot;Debuggen&quot;.</translation>
    </message>
    <message>
        <source>A plug-in</source>
        <translation>Ein Plug-in</translation>
    </message>
    <message>
        <source>The plug-in &apos;%1&apos;</source>
        <translation>Das Plug-in &apos;%1&apos;</translation>
    </message>
    <message>
        <source>%1 has failed in %2: %3
</source>
        <translation>%1 hat versagt in %2: %3
</translation>
    </message>
    <message>
        <source>A plug-in cannot save %1: the file has been modified outside of the editor.
</source>
        <translation>Ein Plug-in kann %1 nicht speichern: Die Datei wurde außerhalb des Editors geändert.
</translation>
    </message>
</context>
<context>
    <name>PluginManager</name>
    <message>
        <source>It was built with version %1 of the editor classes, and this is version %2. Build it again.</source>
        <translation>Es wurde mit Version %1 der Editorklassen erstellt, und dies ist Version %2. Erstellen Sie es neu.</translation>
    </message>
    <message>
        <source>The class of its root object, %1, lacks Q_INTERFACES(IPluginFactory).</source>
        <translation>Der Klasse seines Wurzelobjekts, %1, fehlt Q_INTERFACES(IPluginFactory).</translation>
    </message>
    <message>
        <source>Its root object is not an IPluginFactory.</source>
        <translation>Sein Wurzelobjekt ist keine IPluginFactory.</translation>
    </message>
    <message>
        <source>It has thrown an exception.</source>
        <translation>Es hat eine Ausnahme geworfen.</translation>
    </message>
    <message>
        <source>The feature %1 is taken from %2.</source>
        <translation>Die Fähigkeit %1 kommt von %2.</translation>
    </message>
    <message>
        <source>It has thrown an exception in %1.</source>
        <translation>Es hat in %1 eine Ausnahme geworfen.</translation>
    </message>
</context>
<context>
    <name>PluginProgress</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PluginsDialog</name>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Fähigkeiten</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Switched off</source>
        <translation>Abgeschaltet</translation>
    </message>
    <message>
        <source>Loaded</source>
        <translation>Geladen</translation>
    </message>
    <message>
        <source>The change takes effect when Varnel is started again.</source>
        <translation>Die Änderung wirkt beim nächsten Start von Varnel.</translation>
    </message>
    <message>
        <source>A plug-in without a check mark is not loaded when Varnel starts.</source>
        <translation>Ein Plug-in ohne Häkchen wird beim Start von Varnel nicht geladen.</translation>
    </message>
</context>
<context>
    <name>ProblemReportDialog</name>
    <message>
        <source>Report a Problem</source>
        <translation>Ein Problem melden</translation>
    </message>
    <message>
        <source>C&amp;opy Report</source>
        <translation>Bericht &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;What did you do, what did you expect, and what happened?</source>
        <translation>&amp;Was haben Sie getan, was haben Sie erwartet, und was ist geschehen?</translation>
    </message>
    <message>
        <source>&amp;Details that are part of the report. Nothing is sent: copy the report, look through it, and pass it on yourself.</source>
        <translation>&amp;Angaben, die zum Bericht gehören. Nichts wird gesendet: Kopieren Sie den Bericht, sehen Sie ihn durch und geben Sie ihn selbst weiter.</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Last warnings: %1</source>
        <translation>Letzte Warnungen: %1</translation>
    </message>
</context>
<context>
    <name>ProcessorDock</name>
    <message>
        <source>Processors</source>
        <translation>Prozessoren</translation>
    </message>
    <message>
        <source>&amp;Processors</source>
        <translation>Pro&amp;zessoren</translation>
    </message>
    <message>
        <source>Shows or hides the list of processors</source>
        <translation>Zeigt oder verbirgt die Liste der Prozessoren</translation>
    </message>
</context>
<context>
    <name>ProcessorList</name>
    <message>
        <source>Run</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Runs the selected processor.</source>
        <translation>Startet den ausgewählten Prozessor.</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Pauses the selected processor.</source>
        <translation>Hält den ausgewählten Prozessor an.</translation>
    </message>
    <message>
        <source>Run All</source>
        <translation>Alle starten</translation>
    </message>
    <message>
        <source>Runs all processors.</source>
        <translation>Startet alle Prozessoren.</translation>
    </message>
    <message>
        <source>Pause All</source>
        <translation>Alle anhalten</translation>
    </message>
    <message>
        <source>Pauses all processors.</source>
        <translation>Hält alle Prozessoren an.</translation>
    </message>
    <message>
        <source>Processors</source>
        <translation>Prozessoren</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Last stop</source>
        <translation>Letzter Halt</translation>
    </message>
    <message>
        <source>For</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>No debugger</source>
        <translation>Kein Debugger</translation>
    </message>
    <message>
        <source>Not started</source>
        <translation>Nicht gestartet</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Startet</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Sleeping</source>
        <translation>Schläft</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Breakpoint</source>
        <translation>Haltepunkt</translation>
    </message>
    <message>
        <source>Pause or step</source>
        <translation>Angehalten oder Schritt</translation>
    </message>
    <message>
        <source>End of the program</source>
        <translation>Ende des Programms</translation>
    </message>
</context>
<context>
    <name>ProductDetails</name>
    <message>
        <source> (commit %1)</source>
        <translation> (Commit %1)</translation>
    </message>
    <message>
        <source>Libraries: Qt %1, Python %2</source>
        <translation>Bibliotheken: Qt %1, Python %2</translation>
    </message>
    <message>
        <source>System: %1, %2 %3, %4</source>
        <translation>System: %1, %2 %3, %4</translation>
    </message>
    <message>
        <source>Display: %1</source>
        <translation>Anzeige: %1</translation>
    </message>
    <message>
        <source>Plug-ins: %1</source>
        <translation>Plug-ins: %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Tools:</source>
        <translation>Werkzeuge:</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>nicht gefunden</translation>
    </message>
    <message>
        <source>does not answer</source>
        <translation>antwortet nicht</translation>
    </message>
    <message>
        <source>cannot be started</source>
        <translation>kann nicht gestartet werden</translation>
    </message>
</context>
<context>
    <name>Project</name>
    <message>
        <source>%1 (line %2)</source>
        <translation>%1 (Zeile %2)</translation>
    </message>
</context>
<context>
    <name>ProjectCommands</name>
    <message>
        <source>Open Workspace</source>
        <translation>Arbeitsbereich öffnen</translation>
    </message>
    <message>
        <source>Workspaces (*.vnw);;Projects (*.vnp);;All Files (*.*)</source>
        <translation>Arbeitsbereiche (*.vnw);;Projekte (*.vnp);;Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>The workspace could not be opened.

It will be removed from the Recent Workspaces list.</source>
        <translation>Der Arbeitsbereich konnte nicht geöffnet werden.

Er wird aus der Liste der zuletzt geöffneten Arbeitsbereiche entfernt.</translation>
    </message>
    <message>
        <source>A corresponding workspace has been found.

It will be opened instead of the specified project.</source>
        <translation>Es wurde ein zugehöriger Arbeitsbereich gefunden.

Er wird anstelle des angegebenen Projekts geöffnet.</translation>
    </message>
    <message>
        <source>The project %1 could not be opened.</source>
        <translation>Das Projekt %1 konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>%1 wird geöffnet...</translation>
    </message>
    <message>
        <source>The workspace %1 could not be opened.</source>
        <translation>Der Arbeitsbereich %1 konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>You will be asked again when a workspace in this folder names scripts to be run.</source>
        <translation>Sie werden wieder gefragt, wenn ein Arbeitsbereich in diesem Ordner Skripte nennt, die laufen sollen.</translation>
    </message>
    <message>
        <source>There is no answer for this folder that could be forgotten.</source>
        <translation>Für diesen Ordner gibt es keine Antwort, die vergessen werden könnte.</translation>
    </message>
    <message>
        <source>Opening the project %1...</source>
        <translation>Das Projekt %1 wird geöffnet...</translation>
    </message>
    <message>
        <source>These projects could not be loaded: %1</source>
        <translation>Diese Projekte konnten nicht geladen werden: %1</translation>
    </message>
    <message>
        <source>Add Files to Project</source>
        <translation>Dateien zum Projekt hinzufügen</translation>
    </message>
    <message>
        <source>No file of a project is selected</source>
        <translation>Es ist keine Datei eines Projekts ausgewählt</translation>
    </message>
    <message>
        <source>Insert Project into Workspace</source>
        <translation>Projekt in den Arbeitsbereich einfügen</translation>
    </message>
    <message>
        <source>Project Files (*.vnp)</source>
        <translation>Projektdateien (*.vnp)</translation>
    </message>
    <message>
        <source>The project &apos;%1&apos; is in the workspace already.</source>
        <translation>Das Projekt &apos;%1&apos; ist schon im Arbeitsbereich.</translation>
    </message>
</context>
<context>
    <name>ProjectDropdown</name>
    <message>
        <source>Current project</source>
        <translation>Aktuelles Projekt</translation>
    </message>
</context>
<context>
    <name>ProjectRows</name>
    <message>
        <source>Workspace &apos;%1&apos;: %2 project(s)</source>
        <translation>Arbeitsbereich &apos;%1&apos;: %2 Projekt(e)</translation>
    </message>
    <message>
        <source> (not loaded)</source>
        <translation> (nicht geladen)</translation>
    </message>
    <message>
        <source> (missing)</source>
        <translation> (fehlt)</translation>
    </message>
</context>
<context>
    <name>ProjectSaving</name>
    <message>
        <source>You have made changes to the &apos;%1&apos; workspace and/or one of the projects it contains.

Do you want to save the changes?</source>
        <translation>Sie haben den Arbeitsbereich &apos;%1&apos; und/oder eines seiner Projekte geändert.

Möchten Sie die Änderungen speichern?</translation>
    </message>
    <message>
        <source>Newer versions of the following files exists on disk:

%1

Are you sure that you want to overwrite them?</source>
        <translation>Auf dem Datenträger gibt es neuere Fassungen der folgenden Dateien:

%1

Möchten Sie sie wirklich überschreiben?</translation>
    </message>
    <message>
        <source>The project &apos;%1&apos; could not be saved.

Please make sure that the project file is not read-only.</source>
        <translation>Das Projekt &apos;%1&apos; konnte nicht gespeichert werden.

Bitte sorgen Sie dafür, dass die Projektdatei nicht schreibgeschützt ist.</translation>
    </message>
    <message>
        <source>The workspace could not be saved.

Please make sure that the workspace file is not read-only.</source>
        <translation>Der Arbeitsbereich konnte nicht gespeichert werden.

Bitte sorgen Sie dafür, dass die Datei des Arbeitsbereichs nicht schreibgeschützt ist.</translation>
    </message>
</context>
<context>
    <name>ProjectTree</name>
    <message>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>Enter file extensions for this folder:</source>
        <translation>Dateiendungen für diesen Ordner eingeben:</translation>
    </message>
    <message>
        <source>Add Files to Folder</source>
        <translation>Dateien zum Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the project?</source>
        <translation>Möchten Sie das Projekt wirklich entfernen?</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the selected items (%1) from the project?

No file is deleted on disk.</source>
        <translation>Möchten Sie die ausgewählten Einträge (%1) wirklich aus dem Projekt entfernen?

Auf dem Datenträger wird keine Datei gelöscht.</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the folder &apos;%1&apos; with its contents from the project?

No file is deleted on disk.</source>
        <translation>Möchten Sie den Ordner &apos;%1&apos; mit seinem Inhalt wirklich aus dem Projekt entfernen?

Auf dem Datenträger wird keine Datei gelöscht.</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the file &apos;%1&apos; from the project?

It is not deleted on disk.</source>
        <translation>Möchten Sie die Datei &apos;%1&apos; wirklich aus dem Projekt entfernen?

Auf dem Datenträger wird sie nicht gelöscht.</translation>
    </message>
    <message>
        <source>Are you sure that you want to remove the empty folder &apos;%1&apos; from the project?</source>
        <translation>Möchten Sie den leeren Ordner &apos;%1&apos; wirklich aus dem Projekt entfernen?</translation>
    </message>
    <message>
        <source>What was changed in the project tree has been changed again meanwhile</source>
        <translation>Was im Projektbaum geändert wurde, ist inzwischen noch einmal geändert worden</translation>
    </message>
</context>
<context>
    <name>ProjectTreeMenus</name>
    <message>
        <source>&amp;Run</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>Set as Acti&amp;ve Project</source>
        <translation>Als akti&amp;ves Projekt setzen</translation>
    </message>
    <message>
        <source>&amp;Remove Project from Workspace</source>
        <translation>Projekt aus dem Arbeitsbereich ent&amp;fernen</translation>
    </message>
    <message>
        <source>Save as &amp;Template...</source>
        <translation>Als V&amp;orlage speichern...</translation>
    </message>
    <message>
        <source>Add &amp;Files to Folder...</source>
        <translation>&amp;Dateien zum Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>Neuer &amp;Ordner</translation>
    </message>
    <message>
        <source>Rena&amp;me</source>
        <translation>Um&amp;benennen</translation>
    </message>
    <message>
        <source>&amp;Properties...</source>
        <translation>Eigensc&amp;haften...</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
</context>
<context>
    <name>PropertyBooleanItem</name>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
</context>
<context>
    <name>PropertyEditor</name>
    <message>
        <source>This value is not possible here.</source>
        <translation>Dieser Wert ist hier nicht möglich.</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Shows the properties of all pages that contain this text</source>
        <translation>Zeigt die Eigenschaften aller Seiten, die diesen Text enthalten</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Eigenschaft</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Has values other than the default ones</source>
        <translation>Hat andere Werte als die Vorgaben</translation>
    </message>
    <message>
        <source>There are no properties to edit here.</source>
        <translation>Hier gibt es keine Eigenschaften zu bearbeiten.</translation>
    </message>
    <message>
        <source>No property contains this text.</source>
        <translation>Keine Eigenschaft enthält diesen Text.</translation>
    </message>
    <message>
        <source>&amp;Reset to Default</source>
        <translation>Auf Vorgabe &amp;zurücksetzen</translation>
    </message>
</context>
<context>
    <name>PropertyEditorDialog</name>
    <message>
        <source>File Properties - %1  [%2]</source>
        <translation>Dateieigenschaften - %1  [%2]</translation>
    </message>
    <message>
        <source>Project Properties: %1</source>
        <translation>Projekteigenschaften: %1</translation>
    </message>
    <message>
        <source>Active (%1)</source>
        <translation>Aktiv (%1)</translation>
    </message>
    <message>
        <source>All configurations</source>
        <translation>Alle Konfigurationen</translation>
    </message>
    <message>
        <source>The changes cannot be saved in &quot;All configurations&quot;, because this file has no values of its own yet. Choose one configuration.</source>
        <translation>Die Änderungen können nicht in &quot;Alle Konfigurationen&quot; gespeichert werden, weil diese Datei noch keine eigenen Werte hat. Wählen Sie eine Konfiguration.</translation>
    </message>
    <message>
        <source>The changes cannot be saved, because the project has no configuration.</source>
        <translation>Die Änderungen können nicht gespeichert werden, weil das Projekt keine Konfiguration hat.</translation>
    </message>
    <message>
        <source>Do you want to save the changes you have made?</source>
        <translation>Möchten Sie die Änderungen speichern?</translation>
    </message>
</context>
<context>
    <name>PropertyEditorDialogBase</name>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>Configuration:</source>
        <translation>Konfiguration:</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PropertyFileItem</name>
    <message>
        <source>Choose File</source>
        <translation>Datei wählen</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>Choose Directory</source>
        <translation>Verzeichnis wählen</translation>
    </message>
</context>
<context>
    <name>PythonInterpreter</name>
    <message>
        <source>The virtual environment &apos;%1&apos; has no packages for Python %2.%3.
</source>
        <translation>Die virtuelle Umgebung &apos;%1&apos; hat keine Pakete für Python %2.%3.
</translation>
    </message>
    <message>
        <source>Varnel Command Line (Python %1 on %2)
</source>
        <translation>Varnel-Befehlszeile (Python %1 auf %2)
</translation>
    </message>
    <message>
        <source>Startup file &apos;%1&apos; could not be opened.
</source>
        <translation>Die Startdatei &apos;%1&apos; konnte nicht geöffnet werden.
</translation>
    </message>
    <message>
        <source>Running file &apos;%1&apos;...
</source>
        <translation>Die Datei &apos;%1&apos; wird ausgeführt...
</translation>
    </message>
    <message>
        <source>OK
</source>
        <translation>OK
</translation>
    </message>
</context>
<context>
    <name>PythonOutputPanel</name>
    <message>
        <source>Python</source>
        <translation>Python</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Python Output</source>
        <translation>Python-Ausgabe</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Incorrect options were specified.

Usage: varnel [option]
Options:
-p &lt;project file&gt;\Varnel opens the specified project
</source>
        <translation>Es wurden falsche Optionen angegeben.

Aufruf: varnel [Option]
Optionen:
-p &lt;Projektdatei&gt;\Varnel öffnet das angegebene Projekt
</translation>
    </message>
    <message>
        <source>C/C++ Header File</source>
        <translation>C/C++-Headerdatei</translation>
    </message>
    <message>
        <source>Creates a C/C++ header file</source>
        <translation>Legt eine C/C++-Headerdatei an</translation>
    </message>
    <message>
        <source>C Source File</source>
        <translation>C-Quelldatei</translation>
    </message>
    <message>
        <source>Creates a C source file</source>
        <translation>Legt eine C-Quelldatei an</translation>
    </message>
    <message>
        <source>Python File</source>
        <translation>Python-Datei</translation>
    </message>
    <message>
        <source>Creates a Python source file</source>
        <translation>Legt eine Python-Quelldatei an</translation>
    </message>
    <message>
        <source>Help File</source>
        <translation>Hilfedatei</translation>
    </message>
    <message>
        <source>View Online Help file</source>
        <translation>Datei der Online-Hilfe ansehen</translation>
    </message>
    <message>
        <source>Disassembler View</source>
        <translation>Disassembly-Ansicht</translation>
    </message>
    <message>
        <source>View disassembly</source>
        <translation>Disassembly ansehen</translation>
    </message>
    <message>
        <source>Text File</source>
        <translation>Textdatei</translation>
    </message>
    <message>
        <source>Creates a text file</source>
        <translation>Legt eine Textdatei an</translation>
    </message>
    <message>
        <source>%1

This file has been modified outside of the editor. Do you want to reload it?</source>
        <translation>%1

Diese Datei wurde außerhalb des Editors geändert. Möchten Sie sie neu laden?</translation>
    </message>
    <message>
        <source>The project %1 could not be opened.</source>
        <translation>Das Projekt %1 konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Do you trust the authors of the files in this folder?

%1

The workspace names Python files that run when it is opened.</source>
        <translation>Vertrauen Sie den Autoren der Dateien in diesem Ordner?

%1

Der Arbeitsbereich nennt Python-Dateien, die beim Öffnen laufen.</translation>
    </message>
    <message>
        <source>Source Files (%1);;Python Files (*.py);;All Files (*.*)</source>
        <translation>Quelldateien (%1);;Python-Dateien (*.py);;Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>The expression is not valid: %1</source>
        <translation>Der Ausdruck ist ungültig: %1</translation>
    </message>
    <message>
        <source>The folder &apos;%1&apos; does not exist.</source>
        <translation>Den Ordner &apos;%1&apos; gibt es nicht.</translation>
    </message>
    <message>
        <source>The search ended after 100,000 lines.</source>
        <translation>Die Suche endete nach 100.000 Zeilen.</translation>
    </message>
    <message>
        <source>%1 was not searched whole: the expression needs too many steps.</source>
        <translation>%1 wurde nicht ganz durchsucht: Der Ausdruck braucht zu viele Schritte.</translation>
    </message>
    <message>
        <source>%1 was not searched whole: it could not be read.</source>
        <translation>%1 wurde nicht ganz durchsucht: Die Datei konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Binary file matches</source>
        <translation>Binärdatei enthält Treffer</translation>
    </message>
    <message>
        <source>%1

This file has been modified outside of the editor. Do you want to reload it, and to lose your changes that are not saved?</source>
        <translation>%1

Diese Datei wurde außerhalb des Editors geändert. Möchten Sie sie neu laden und Ihre nicht gespeicherten Änderungen verlieren?</translation>
    </message>
    <message>
        <source>Deleted outside of the editor, still open here: %1</source>
        <translation>Außerhalb des Editors gelöscht, hier noch offen: %1</translation>
    </message>
</context>
<context>
    <name>QProgressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>QemuMachine</name>
    <message>
        <source>Cannot make the socket &apos;%1&apos;: %2</source>
        <translation>Der Socket &apos;%1&apos; kann nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ended at once: %2</source>
        <translation>&apos;%1&apos; endete sofort: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; did not bring up &apos;%2&apos; within %3 s.</source>
        <translation>&apos;%1&apos; hat &apos;%2&apos; nicht innerhalb von %3 s gestartet.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was ended by a signal.</source>
        <translation>&apos;%1&apos; wurde durch ein Signal beendet.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; ended with code %2.</source>
        <translation>&apos;%1&apos; endete mit dem Code %2.</translation>
    </message>
</context>
<context>
    <name>QemuTarget</name>
    <message>
        <source>gdb cannot connect to &apos;%1&apos;: %2</source>
        <translation>gdb kann sich nicht mit &apos;%1&apos; verbinden: %2</translation>
    </message>
    <message>
        <source>The second core of &apos;%1&apos; cannot be connected: %2</source>
        <translation>Der zweite Kern von &apos;%1&apos; kann nicht verbunden werden: %2</translation>
    </message>
</context>
<context>
    <name>QueryPane</name>
    <message>
        <source>The program is not paused.</source>
        <translation>Das Programm ist nicht angehalten.</translation>
    </message>
</context>
<context>
    <name>RateSwitch</name>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>Reads the target while the program runs, without stopping it.</source>
        <translation>Liest das Zielsystem, während das Programm läuft, ohne es anzuhalten.</translation>
    </message>
    <message>
        <source>%1 times a second</source>
        <translation>%1-mal je Sekunde</translation>
    </message>
</context>
<context>
    <name>Recovery</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und eine weitere</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>The program ended before changes to these files were saved:

%1

Do you want to recover the changes?</source>
        <translation>Das Programm endete, bevor Änderungen an diesen Dateien gespeichert wurden:

%1

Möchten Sie die Änderungen wiederherstellen?</translation>
    </message>
    <message>
        <source>The changes to the following file could not be recovered:
%1

They are kept in the file
%2</source>
        <translation>Die Änderungen an der folgenden Datei konnten nicht wiederhergestellt werden:
%1

Sie bleiben erhalten in der Datei
%2</translation>
    </message>
    <message>
        <source>%1 (%2; the file on disk is newer)</source>
        <translation>%1 (%2; die Datei auf dem Datenträger ist neuer)</translation>
    </message>
</context>
<context>
    <name>RegisterList</name>
    <message>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>RegisterTable</name>
    <message>
        <source>Vector</source>
        <translation>Vektor</translation>
    </message>
    <message>
        <source>Floating point</source>
        <translation>Gleitkomma</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
</context>
<context>
    <name>RegisterWidget</name>
    <message>
        <source>Signed Decimal</source>
        <translation>Dezimal mit Vorzeichen</translation>
    </message>
    <message>
        <source>Unsigned Decimal</source>
        <translation>Dezimal ohne Vorzeichen</translation>
    </message>
    <message>
        <source>Hexadecimal</source>
        <translation>Hexadezimal</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>Binär</translation>
    </message>
    <message>
        <source>Fractional</source>
        <translation>Festkomma</translation>
    </message>
    <message>
        <source>Registers</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a number: %2 was set to 0.</source>
        <translation>&apos;%1&apos; ist keine Zahl: %2 wurde auf 0 gesetzt.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is wider than the %2 bits of %3.</source>
        <translation>&apos;%1&apos; ist breiter als die %2 Bits von %3.</translation>
    </message>
    <message>
        <source>%1 takes a hexadecimal number like 0x1A.</source>
        <translation>%1 nimmt eine hexadezimale Zahl wie 0x1A an.</translation>
    </message>
    <message>
        <source>%1 takes a number like 26, -26, 0x1A, 0b11010 or 0.5.</source>
        <translation>%1 nimmt eine Zahl wie 26, -26, 0x1A, 0b11010 oder 0.5 an.</translation>
    </message>
</context>
<context>
    <name>RemoteTarget</name>
    <message>
        <source>The project property &quot;Address&quot; of the target is empty.</source>
        <translation>Die Projekteigenschaft &quot;Adresse&quot; des Zielsystems ist leer.</translation>
    </message>
    <message>
        <source>gdb cannot connect to &apos;%1&apos;: %2
Is the target&apos;s server running, and no other debugger on it?</source>
        <translation>gdb kann sich nicht mit &apos;%1&apos; verbinden: %2
Läuft der Server des Zielsystems, und ist kein anderer Debugger damit verbunden?</translation>
    </message>
    <message>
        <source>The program cannot be loaded into &apos;%1&apos;: %2</source>
        <translation>Das Programm kann nicht in &apos;%1&apos; geladen werden: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be reset: %2</source>
        <translation>&apos;%1&apos; kann nicht zurückgesetzt werden: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot start its program again.</source>
        <translation>&apos;%1&apos; kann sein Programm nicht noch einmal starten.</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Memory below 0x80000000</source>
        <translation>Speicher unter 0x80000000</translation>
    </message>
    <message>
        <source>Memory from 0x80000000</source>
        <translation>Speicher ab 0x80000000</translation>
    </message>
    <message>
        <source>The memory is not read while the program runs, because there is no connection to the Tcl port %1 of OpenOCD: %2
</source>
        <translation>Der Speicher wird nicht gelesen, während das Programm läuft, weil es keine Verbindung zum Tcl-Port %1 von OpenOCD gibt: %2
</translation>
    </message>
</context>
<context>
    <name>ReplaceDialog</name>
    <message>
        <source>Cannot find the string &apos;%1&apos;</source>
        <translation>Der Text &apos;%1&apos; wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>The search for &apos;%1&apos; was given up: the expression takes too long</source>
        <translation>Die Suche nach „%1“ wurde aufgegeben: Der Ausdruck dauert zu lange</translation>
    </message>
</context>
<context>
    <name>ReplaceDialogBase</name>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Fi&lt;u&gt;n&lt;/u&gt;d what:</source>
        <translation>Suche&lt;u&gt;n&lt;/u&gt; nach:</translation>
    </message>
    <message>
        <source>Re&lt;u&gt;p&lt;/u&gt;lace with:</source>
        <translation>Ersetzen &lt;u&gt;d&lt;/u&gt;urch:</translation>
    </message>
    <message>
        <source>Match &amp;whole word only</source>
        <translation>Nur ganze &amp;Wörter</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß- und Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Regular e&amp;xpression</source>
        <translation>Regulärer &amp;Ausdruck</translation>
    </message>
    <message>
        <source>In the replacement, \1 to \9 stand for the groups, \0 for the whole match, \n for a line end and \t for a tab.</source>
        <translation>In der Ersetzung stehen \1 bis \9 für die Gruppen, \0 für den ganzen Treffer, \n für ein Zeilenende und \t für einen Tabulator.</translation>
    </message>
    <message>
        <source>Replace in</source>
        <translation>Ersetzen in</translation>
    </message>
    <message>
        <source>&amp;Selection</source>
        <translation>A&amp;uswahl</translation>
    </message>
    <message>
        <source>Wh&amp;ole file</source>
        <translation>Ganze Da&amp;tei</translation>
    </message>
    <message>
        <source>&amp;Find Next</source>
        <translation>Weiter&amp;suchen</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Replace &amp;All</source>
        <translation>A&amp;lle ersetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>RttChannel</name>
    <message>
        <source>The RTT control block at 0x%1 has invalid values and is not used.
</source>
        <translation>Der RTT-Steuerblock bei 0x%1 enthält ungültige Werte und wird nicht benutzt.
</translation>
    </message>
</context>
<context>
    <name>ScriptRecorder</name>
    <message>
        <source>Recording. Choose Record Script again to stop.</source>
        <translation>Die Aufzeichnung läuft. Wählen Sie Skript aufzeichnen noch einmal, um sie zu beenden.</translation>
    </message>
    <message>
        <source>Nothing was recorded.</source>
        <translation>Es wurde nichts aufgezeichnet.</translation>
    </message>
    <message>
        <source>The recording is in the editor.</source>
        <translation>Die Aufzeichnung ist im Editor.</translation>
    </message>
</context>
<context>
    <name>Scripts</name>
    <message>
        <source>No project is open.</source>
        <translation>Kein Projekt ist geöffnet.</translation>
    </message>
    <message>
        <source>Building...</source>
        <translation>Wird erstellt...</translation>
    </message>
    <message>
        <source>Builds: {}</source>
        <translation>Erstellt: {}</translation>
    </message>
    <message>
        <source>The processor fetched an instruction from a protected address (IACCVIOL).</source>
        <translation>Der Prozessor hat einen Befehl von einer geschützten Adresse geholt (IACCVIOL).</translation>
    </message>
    <message>
        <source>The program read or wrote a protected address (DACCVIOL).</source>
        <translation>Das Programm hat eine geschützte Adresse gelesen oder geschrieben (DACCVIOL).</translation>
    </message>
    <message>
        <source>A protected address was used on return from an exception (MUNSTKERR).</source>
        <translation>Bei der Rückkehr aus einer Ausnahme wurde eine geschützte Adresse benutzt (MUNSTKERR).</translation>
    </message>
    <message>
        <source>The stack is at a protected address on entry to an exception; it may have overflowed (MSTKERR).</source>
        <translation>Der Stack ist beim Eintritt in eine Ausnahme an einer geschützten Adresse; vielleicht ist er übergelaufen (MSTKERR).</translation>
    </message>
    <message>
        <source>A protected address was used while floating-point registers were saved (MLSPERR).</source>
        <translation>Beim Sichern der Gleitkommaregister wurde eine geschützte Adresse benutzt (MLSPERR).</translation>
    </message>
    <message>
        <source>There is no memory at the address of an instruction (IBUSERR).</source>
        <translation>An der Adresse eines Befehls ist kein Speicher (IBUSERR).</translation>
    </message>
    <message>
        <source>There is no memory at an address that the program read or wrote (PRECISERR).</source>
        <translation>An einer Adresse, die das Programm gelesen oder geschrieben hat, ist kein Speicher (PRECISERR).</translation>
    </message>
    <message>
        <source>A write failed some instructions before; the location is not exact (IMPRECISERR).</source>
        <translation>Ein Schreiben einige Befehle zuvor ist fehlgeschlagen; die Stelle ist nicht genau (IMPRECISERR).</translation>
    </message>
    <message>
        <source>The stack is outside memory on return from an exception (UNSTKERR).</source>
        <translation>Der Stack ist bei der Rückkehr aus einer Ausnahme außerhalb des Speichers (UNSTKERR).</translation>
    </message>
    <message>
        <source>The stack is outside memory on entry to an exception; it may have overflowed (STKERR).</source>
        <translation>Der Stack ist beim Eintritt in eine Ausnahme außerhalb des Speichers; vielleicht ist er übergelaufen (STKERR).</translation>
    </message>
    <message>
        <source>Floating-point registers could not be saved (LSPERR).</source>
        <translation>Gleitkommaregister konnten nicht gesichert werden (LSPERR).</translation>
    </message>
    <message>
        <source>The processor does not know the instruction (UNDEFINSTR).</source>
        <translation>Der Prozessor kennt den Befehl nicht (UNDEFINSTR).</translation>
    </message>
    <message>
        <source>An address to which the program jumped has bit 0 clear, which is no Thumb code (INVSTATE).</source>
        <translation>Bei einer Adresse, zu der das Programm gesprungen ist, ist Bit 0 nicht gesetzt; das ist kein Thumb-Code (INVSTATE).</translation>
    </message>
    <message>
        <source>The value in the link register is none for a return from an exception (INVPC).</source>
        <translation>Der Wert im Link-Register ist keiner für die Rückkehr aus einer Ausnahme (INVPC).</translation>
    </message>
    <message>
        <source>The coprocessor or floating-point unit is absent or switched off (NOCP).</source>
        <translation>Der Koprozessor oder die Gleitkommaeinheit fehlt oder ist ausgeschaltet (NOCP).</translation>
    </message>
    <message>
        <source>The stack limit was passed (STKOF).</source>
        <translation>Die Grenze des Stacks wurde überschritten (STKOF).</translation>
    </message>
    <message>
        <source>An address of a word or half-word is not aligned (UNALIGNED).</source>
        <translation>Eine Adresse eines Worts oder Halbworts ist nicht ausgerichtet (UNALIGNED).</translation>
    </message>
    <message>
        <source>The program divided by zero (DIVBYZERO).</source>
        <translation>Das Programm hat durch null geteilt (DIVBYZERO).</translation>
    </message>
    <message>
        <source>The vector of an exception could not be read (VECTTBL).</source>
        <translation>Der Vektor einer Ausnahme konnte nicht gelesen werden (VECTTBL).</translation>
    </message>
    <message>
        <source>Another fault has become a hard fault, because its handler is off or cannot interrupt (FORCED).</source>
        <translation>Aus einem anderen Fehler ist ein Hard Fault geworden, weil dessen Behandlung ausgeschaltet ist oder nicht unterbrechen kann (FORCED).</translation>
    </message>
    <message>
        <source>A breakpoint instruction was executed without a debugger (DEBUGEVT).</source>
        <translation>Ein Haltepunktbefehl wurde ohne Debugger ausgeführt (DEBUGEVT).</translation>
    </message>
    <message>
        <source>There is no fault.</source>
        <translation>Es liegt kein Fehler vor.</translation>
    </message>
    <message>
        <source>To see where it happened, pause at the first instruction of the handler.</source>
        <translation>Um zu sehen, wo es geschehen ist, halten Sie beim ersten Befehl der Fehlerbehandlung an.</translation>
    </message>
    <message>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>The protected address is {}.</source>
        <translation>Die geschützte Adresse ist {}.</translation>
    </message>
    <message>
        <source>The address is {}.</source>
        <translation>Die Adresse ist {}.</translation>
    </message>
    <message>
        <source>It happened at {}.</source>
        <translation>Es ist bei {} geschehen.</translation>
    </message>
    <message>
        <source>Open a source file first.</source>
        <translation>Öffnen Sie zuerst eine Quelldatei.</translation>
    </message>
    <message>
        <source>{file}: {reached} of {all} lines with code were reached.</source>
        <translation>{file}: {reached} von {all} Zeilen mit Code wurden erreicht.</translation>
    </message>
    <message>
        <source>The target has no memory that can be read.</source>
        <translation>Das Zielsystem hat keinen Speicher, der gelesen werden kann.</translation>
    </message>
    <message>
        <source>No region of the memory contains these {} bytes.</source>
        <translation>Kein Bereich des Speichers enthält diese {} Bytes.</translation>
    </message>
    <message>
        <source>Enter an address.</source>
        <translation>Geben Sie eine Adresse ein.</translation>
    </message>
    <message>
        <source>No debug session is running.</source>
        <translation>Es läuft keine Debug-Sitzung.</translation>
    </message>
    <message>
        <source>The program is not paused.</source>
        <translation>Das Programm ist nicht angehalten.</translation>
    </message>
    <message>
        <source>&apos;{}&apos; is no number: {}</source>
        <translation>&apos;{}&apos; ist keine Zahl: {}</translation>
    </message>
    <message>
        <source>The project could not be written: {}</source>
        <translation>Das Projekt konnte nicht geschrieben werden: {}</translation>
    </message>
    <message>
        <source>The file &apos;{}&apos; exists already.</source>
        <translation>Die Datei &apos;{}&apos; gibt es bereits.</translation>
    </message>
    <message>
        <source>The program has none of these kernels: {}</source>
        <translation>Das Programm hat keinen dieser Kernel: {}</translation>
    </message>
    <message>
        <source>Flash and RAM overlap.</source>
        <translation>Flash und RAM überschneiden sich.</translation>
    </message>
    <message>
        <source>The chip file of OpenOCD has a name such as target/chip.cfg.</source>
        <translation>Die Chipdatei von OpenOCD hat einen Namen wie target/chip.cfg.</translation>
    </message>
    <message>
        <source>The memory does not end below 4 GB.</source>
        <translation>Der Speicher endet nicht unterhalb von 4 GB.</translation>
    </message>
    <message>
        <source>The memory must begin at a multiple of 1024.</source>
        <translation>Der Speicher muss bei einem Vielfachen von 1024 beginnen.</translation>
    </message>
    <message>
        <source>The size of the memory must be a multiple of 8.</source>
        <translation>Die Größe des Speichers muss ein Vielfaches von 8 sein.</translation>
    </message>
    <message>
        <source>&apos;{}&apos; is not a number. Write it like 0x8000, 64K or 1M.</source>
        <translation>&apos;{}&apos; ist keine Zahl. Schreiben Sie sie wie 0x8000, 64K oder 1M.</translation>
    </message>
    <message>
        <source>QEMU has no board with a {}.</source>
        <translation>QEMU hat keine Platine mit einem {}.</translation>
    </message>
    <message>
        <source>The memory is too small: it needs {} bytes.</source>
        <translation>Der Speicher ist zu klein: er braucht {} Bytes.</translation>
    </message>
    <message>
        <source>The emulated board &apos;{board}&apos; has this memory at {start} with {size} KB.</source>
        <translation>Die emulierte Platine &apos;{board}&apos; hat diesen Speicher bei {start} mit {size} KB.</translation>
    </message>
    <message>
        <source>&apos;{}&apos; is too large for an SVD file.</source>
        <translation>&apos;{}&apos; ist zu groß für eine SVD-Datei.</translation>
    </message>
    <message>
        <source>The SVD file cannot be read: {}</source>
        <translation>Die SVD-Datei kann nicht gelesen werden: {}</translation>
    </message>
    <message>
        <source>SVD files (*.svd *.xml)</source>
        <translation>SVD-Dateien (*.svd *.xml)</translation>
    </message>
    <message>
        <source>Two processors</source>
        <translation>Zwei Prozessoren</translation>
    </message>
    <message>
        <source>&apos;{}&apos; was stopped: it took too long or wrote too much.</source>
        <translation>&apos;{}&apos; wurde beendet: es dauerte zu lange oder schrieb zu viel.</translation>
    </message>
    <message>
        <source>The folder has a script &apos;configure&apos; but no Makefile. Run it in a terminal, and create the project again to take over its settings.</source>
        <translation>Der Ordner hat ein Skript &apos;configure&apos;, aber kein Makefile. Führen Sie es in einem Terminal aus, und legen Sie das Projekt noch einmal an, um dessen Einstellungen zu übernehmen.</translation>
    </message>
    <message>
        <source>make shows no compiler commands.</source>
        <translation>make zeigt keine Aufrufe des Compilers.</translation>
    </message>
    <message>
        <source>CMake could not read the folder.</source>
        <translation>CMake konnte den Ordner nicht lesen.</translation>
    </message>
    <message>
        <source>The {} of the folder was not read, since that would run programs.</source>
        <translation>Die Datei {} des Ordners wurde nicht gelesen, weil das Programme ausführen würde.</translation>
    </message>
    <message>
        <source>make shows no compiler commands: {}</source>
        <translation>make zeigt keine Aufrufe des Compilers: {}</translation>
    </message>
    <message>
        <source>These headers are generated by the build of the folder, but do not exist yet. Run its build once: {}</source>
        <translation>Diese Header werden beim Erstellen des Ordners erzeugt, aber es gibt sie noch nicht. Erstellen Sie ihn einmal: {}</translation>
    </message>
    <message>
        <source>CMake could not read the folder: {}</source>
        <translation>CMake konnte den Ordner nicht lesen: {}</translation>
    </message>
    <message>
        <source>{} is generated by the build of the folder, and does not exist yet.</source>
        <translation>{} wird beim Erstellen des Ordners erzeugt, und es gibt die Datei noch nicht.</translation>
    </message>
    <message>
        <source>The folder has a linker script, so it is built for Arm. Please set the processor options, the linker script and, for another processor, the tool chain.</source>
        <translation>Der Ordner hat ein Linkerskript und wird deshalb für Arm erstellt. Bitte setzen Sie die Optionen des Prozessors, das Linkerskript und, für einen anderen Prozessor, die Werkzeugkette.</translation>
    </message>
    <message>
        <source>1 source</source>
        <translation>1 Quelldatei</translation>
    </message>
    <message>
        <source>{name} (program, {sources})</source>
        <translation>{name} (Programm, {sources})</translation>
    </message>
    <message>
        <source>{name} (library, {sources})</source>
        <translation>{name} (Bibliothek, {sources})</translation>
    </message>
    <message>
        <source>The folder has too many files. Only some of them were searched.</source>
        <translation>Der Ordner hat zu viele Dateien. Nur einige davon wurden durchsucht.</translation>
    </message>
    <message>
        <source>Please choose the target of the debugger: &quot;Project&quot;, &quot;Properties&quot;, &quot;Debugger&quot;.</source>
        <translation>Bitte wählen Sie das Zielsystem des Debuggers: &quot;Projekt&quot;, &quot;Eigenschaften&quot;, &quot;Debugger&quot;.</translation>
    </message>
    <message>
        <source>The folder has no source files.</source>
        <translation>Der Ordner hat keine Quelldateien.</translation>
    </message>
    <message>
        <source>{} sources</source>
        <translation>{} Quelldateien</translation>
    </message>
    <message>
        <source>No function &apos;main&apos; was found. To make a library, change the option &quot;Target type&quot;.</source>
        <translation>Keine Funktion &apos;main&apos; wurde gefunden. Für eine Bibliothek ändern Sie die Option &quot;Art der Ausgabe&quot;.</translation>
    </message>
    <message>
        <source>None of the sources that {} names exists. All sources in the folder are used instead.</source>
        <translation>Keine der Quelldateien, die {} nennt, gibt es. Stattdessen werden alle Quelldateien des Ordners benutzt.</translation>
    </message>
    <message>
        <source>The folder has {count} functions &apos;main&apos;. The project uses that of {first}; these files are excluded from the build: {others}</source>
        <translation>Der Ordner hat {count} Funktionen &apos;main&apos;. Das Projekt benutzt die von {first}; diese Dateien werden nicht mit erstellt: {others}</translation>
    </message>
    <message>
        <source>These sources are generated by the build of the folder, but do not exist yet: {}</source>
        <translation>Diese Quelldateien werden beim Erstellen des Ordners erzeugt, aber es gibt sie noch nicht: {}</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The compiler is clang. The project uses gcc, which does not have all of its flags.</source>
        <translation>Der Compiler ist clang. Das Projekt benutzt gcc, das nicht alle seine Optionen hat.</translation>
    </message>
    <message>
        <source>The folder makes a shared library. The project makes a static one.</source>
        <translation>Der Ordner erzeugt eine dynamische Bibliothek, das Projekt eine statische.</translation>
    </message>
    <message>
        <source>These files have names that a project cannot store: {}</source>
        <translation>Diese Dateien haben Namen, die ein Projekt nicht speichern kann: {}</translation>
    </message>
    <message>
        <source>These files are made by the build of the folder, but do not exist yet: {}</source>
        <translation>Diese Dateien werden beim Erstellen des Ordners erzeugt, aber es gibt sie noch nicht: {}</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>The program &apos;qmake6&apos; was not found. Install the package qt6-base-dev.</source>
        <translation>Das Programm &apos;qmake6&apos; wurde nicht gefunden. Installieren Sie das Paket qt6-base-dev.</translation>
    </message>
    <message>
        <source>The headers for plug-ins are not installed:

{}

Install the package varnel-sdk.</source>
        <translation>Die Header für Plug-ins sind nicht installiert:

{}

Installieren Sie das Paket varnel-sdk.</translation>
    </message>
</context>
<context>
    <name>SearchBox</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
</context>
<context>
    <name>SessionStart</name>
    <message>
        <source>The project &apos;%1&apos; needs rebuilding.

Do you want rebuild the project before continuing?</source>
        <translation>Das Projekt &apos;%1&apos; muss neu erstellt werden.

Möchten Sie es jetzt erstellen?</translation>
    </message>
    <message>
        <source>Cannot start debugger.

Please see Debug Output window for details.</source>
        <translation>Der Debugger kann nicht gestartet werden.

Einzelheiten stehen im Ausgabefenster auf der Seite &quot;Debuggen&quot;.</translation>
    </message>
    <message>
        <source>Initialising execution environment for project &apos;%1&apos;
</source>
        <translation>Die Ausführungsumgebung für das Projekt &apos;%1&apos; wird vorbereitet
</translation>
    </message>
    <message>
        <source>No execution environment available for project &apos;%1&apos;
</source>
        <translation>Für das Projekt &apos;%1&apos; ist keine Ausführungsumgebung verfügbar
</translation>
    </message>
</context>
<context>
    <name>Shortcuts</name>
    <message>
        <source>the menu %1</source>
        <translation>dem Menü %1</translation>
    </message>
</context>
<context>
    <name>ShortcutsPage</name>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Keys of Varnel</source>
        <translation>Tasten von Varnel</translation>
    </message>
    <message>
        <source>Command, menu or keys</source>
        <translation>Befehl, Menü oder Tasten</translation>
    </message>
    <message>
        <source>&amp;Set:</source>
        <translation>&amp;Satz:</translation>
    </message>
    <message>
        <source>S&amp;earch:</source>
        <translation>S&amp;uchen:</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>In conflict with</source>
        <translation>Im Konflikt mit</translation>
    </message>
    <message>
        <source>New keys</source>
        <translation>Neue Tasten</translation>
    </message>
    <message>
        <source>Press the new keys, up to four one after the other. Tab leaves the field.</source>
        <translation>Drücken Sie die neuen Tasten, bis zu vier nacheinander. Tab verlässt das Feld.</translation>
    </message>
    <message>
        <source>New &amp;keys:</source>
        <translation>Neue &amp;Tasten:</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>Re&amp;move Keys</source>
        <translation>Tasten &amp;entfernen</translation>
    </message>
    <message>
        <source>Rese&amp;t Command</source>
        <translation>&amp;Befehl zurücksetzen</translation>
    </message>
    <message>
        <source>Reset A&amp;ll</source>
        <translation>A&amp;lles zurücksetzen</translation>
    </message>
    <message>
        <source>These keys are used by: %1</source>
        <translation>Diese Tasten gehören zu: %1</translation>
    </message>
</context>
<context>
    <name>StartProgress</name>
    <message>
        <source>Starting the debugger...</source>
        <translation>Der Debugger wird gestartet...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>StoredBreakpoints</name>
    <message>
        <source>The breakpoint at %1, %2 could not be set again.
</source>
        <translation>Der Haltepunkt in %1, %2 konnte nicht wieder gesetzt werden.
</translation>
    </message>
    <message>
        <source>The breakpoint at the data &apos;%1&apos; could not be set again.
</source>
        <translation>Der Haltepunkt an den Daten &apos;%1&apos; konnte nicht wieder gesetzt werden.
</translation>
    </message>
</context>
<context>
    <name>SvdFile</name>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>it does not describe a device</source>
        <translation>sie beschreibt kein Gerät</translation>
    </message>
    <message>
        <source>too much in it</source>
        <translation>sie enthält zu viel</translation>
    </message>
    <message>
        <source>it describes too many registers</source>
        <translation>sie beschreibt zu viele Register</translation>
    </message>
</context>
<context>
    <name>SymbolTable</name>
    <message>
        <source>The source file &apos;%1&apos; does not exist; the disassembly is shown instead. To find it elsewhere, set the project property &quot;Source directories&quot;.
</source>
        <translation>Die Quelldatei &apos;%1&apos; gibt es nicht; stattdessen wird das Disassembly gezeigt. Um sie anderswo zu finden, setzen Sie die Projekteigenschaft &quot;Quellverzeichnisse&quot;.
</translation>
    </message>
</context>
<context>
    <name>TabbedViewManager</name>
    <message>
        <source>Open windows</source>
        <translation>Offene Fenster</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>TargetConsole</name>
    <message>
        <source>Target console</source>
        <translation>Zielkonsole</translation>
    </message>
    <message>
        <source>Output of the program</source>
        <translation>Ausgabe des Programms</translation>
    </message>
    <message>
        <source>Line to send to the program</source>
        <translation>Zeile, die an das Programm gesendet wird</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Sends the end of the input (Ctrl+D)</source>
        <translation>Sendet das Ende der Eingabe (Strg+D)</translation>
    </message>
</context>
<context>
    <name>TargetOptions</name>
    <message>
        <source>The debugger option &apos;%1&apos; is invalid.</source>
        <translation>Die Debugger-Option &apos;%1&apos; ist ungültig.</translation>
    </message>
</context>
<context>
    <name>TargetState</name>
    <message>
        <source>%1 was %2 and is %3.</source>
        <translation>%1 war %2 und ist %3.</translation>
    </message>
    <message>
        <source>%1 was read: %2.</source>
        <translation>%1 wurde gelesen: %2.</translation>
    </message>
    <message>
        <source>The program ended with code %1.</source>
        <translation>Das Programm endete mit dem Code %1.</translation>
    </message>
    <message>
        <source>The program ended.</source>
        <translation>Das Programm endete.</translation>
    </message>
    <message>
        <source>The program was ended by %1.</source>
        <translation>Das Programm wurde durch %1 beendet.</translation>
    </message>
    <message>
        <source>The program received %1, %2.</source>
        <translation>Das Programm hat %1 erhalten, %2.</translation>
    </message>
</context>
<context>
    <name>TaskList</name>
    <message>
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>it is not &quot;number of tasks; running task; stack pointer; name&quot;</source>
        <translation>es ist nicht &quot;Anzahl der Tasks; laufender Task; Stapelzeiger; Name&quot;</translation>
    </message>
    <message>
        <source>task %1</source>
        <translation>Task %1</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>wartet</translation>
    </message>
</context>
<context>
    <name>TemplateCommands</name>
    <message>
        <source>Could not read from file &apos;%1&apos; .

The project has not been created</source>
        <translation>Die Datei &apos;%1&apos; konnte nicht gelesen werden.

Das Projekt wurde nicht angelegt</translation>
    </message>
    <message>
        <source>Could not write to file &apos;%1&apos; .

The project has not been created</source>
        <translation>Die Datei &apos;%1&apos; konnte nicht geschrieben werden.

Das Projekt wurde nicht angelegt</translation>
    </message>
    <message>
        <source>Could not rename the project file &apos;%1&apos; .

The project has not been created</source>
        <translation>Die Projektdatei &apos;%1&apos; konnte nicht umbenannt werden.

Das Projekt wurde nicht angelegt</translation>
    </message>
    <message>
        <source>

See Python Command Window for details</source>
        <translation>

Einzelheiten stehen im Python-Befehlsfenster</translation>
    </message>
    <message>
        <source>Error loading Python module &apos;%1&apos;.</source>
        <translation>Fehler beim Laden des Python-Moduls &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>createProject Python function not found in module &apos;%1&apos;.</source>
        <translation>Die Python-Funktion createProject wurde im Modul &apos;%1&apos; nicht gefunden.</translation>
    </message>
    <message>
        <source>Error in createProject Python function.</source>
        <translation>Fehler in der Python-Funktion createProject.</translation>
    </message>
    <message>
        <source>createProject Python function must return:

    path to project file (.vnp)

    OR

    path to workspace file (.vnw)

    OR

    Nothing</source>
        <translation>Die Python-Funktion createProject muss eines davon zurückgeben:

    den Pfad einer Projektdatei (.vnp)

    ODER

    den Pfad einer Arbeitsbereichsdatei (.vnw)

    ODER

    nichts</translation>
    </message>
    <message>
        <source>No script specified in template &apos;%1&apos; </source>
        <translation>In der Vorlage &apos;%1&apos; ist kein Skript angegeben </translation>
    </message>
    <message>
        <source>The file &apos;%1&apos; already exists in the project folder.

 Do you want to overwrite it?</source>
        <translation>Die Datei &apos;%1&apos; gibt es im Projektordner bereits.

 Möchten Sie sie überschreiben?</translation>
    </message>
    <message>
        <source>Copying the template...</source>
        <translation>Die Vorlage wird kopiert...</translation>
    </message>
    <message>
        <source>The template &apos;%1&apos; creates the project...</source>
        <translation>Die Vorlage &apos;%1&apos; legt das Projekt an...</translation>
    </message>
    <message>
        <source>File returned from createProject Python function does not exist:

%1</source>
        <translation>Die von der Python-Funktion createProject zurückgegebene Datei gibt es nicht:

%1</translation>
    </message>
    <message>
        <source>File returned from createProject Python function is not a workspace file (.vnw) or a project file (.vnp):

%1</source>
        <translation>Die von der Python-Funktion createProject zurückgegebene Datei ist weder eine Arbeitsbereichsdatei (.vnw) noch eine Projektdatei (.vnp):

%1</translation>
    </message>
    <message>
        <source>Name of the new project template:</source>
        <translation>Name der neuen Projektvorlage:</translation>
    </message>
    <message>
        <source>A template with that name exists already. Do you want to replace it?</source>
        <translation>Eine Vorlage mit diesem Namen gibt es bereits. Möchten Sie sie ersetzen?</translation>
    </message>
    <message>
        <source>A project like %1.</source>
        <translation>Ein Projekt wie %1.</translation>
    </message>
    <message>
        <source>My templates</source>
        <translation>Meine Vorlagen</translation>
    </message>
    <message>
        <source>Templates that were made of your projects.</source>
        <translation>Vorlagen, die aus Ihren Projekten gemacht wurden.</translation>
    </message>
    <message>
        <source>Saving the template...</source>
        <translation>Die Vorlage wird gespeichert...</translation>
    </message>
    <message>
        <source>The template could not be saved.

Please make sure that the folder &apos;%1&apos; can be written.</source>
        <translation>Die Vorlage konnte nicht gespeichert werden.

Bitte sorgen Sie dafür, dass in den Ordner &apos;%1&apos; geschrieben werden kann.</translation>
    </message>
    <message>
        <source>The template &apos;%1&apos; was saved. The folder &quot;My templates&quot; of the new-project dialog has it.</source>
        <translation>Die Vorlage &apos;%1&apos; wurde gespeichert. Sie ist im Ordner &quot;Meine Vorlagen&quot; des Dialogs für neue Projekte.</translation>
    </message>
    <message>
        <source>This file exists already and was not changed: %1</source>
        <translation>Diese Datei gibt es bereits; sie wurde nicht geändert: %1</translation>
    </message>
    <message>
        <source>The files of the template &apos;%1&apos; cannot be read.</source>
        <translation>Die Dateien der Vorlage &apos;%1&apos; können nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The project &apos;%1&apos; is open. Remove it from the workspace before its file is replaced.</source>
        <translation>Das Projekt &apos;%1&apos; ist geöffnet. Entfernen Sie es aus dem Arbeitsbereich, bevor seine Datei ersetzt wird.</translation>
    </message>
    <message>
        <source>The template &apos;%1&apos; cannot be replaced, because an open project lies in its folder. Please enter another name.</source>
        <translation>Die Vorlage &apos;%1&apos; kann nicht ersetzt werden, weil ein geöffnetes Projekt in ihrem Ordner liegt. Bitte geben Sie einen anderen Namen ein.</translation>
    </message>
    <message>
        <source>The template does not contain these files. New projects will use them where they are now:

%1</source>
        <translation>Die Vorlage enthält diese Dateien nicht. Neue Projekte werden sie dort benutzen, wo sie jetzt sind:

%1</translation>
    </message>
    <message>
        <source>These options have paths that lead out of the project&apos;s folder. Please check them in new projects:

%1</source>
        <translation>Diese Optionen haben Pfade, die aus dem Ordner des Projekts hinausführen. Bitte prüfen Sie sie in neuen Projekten:

%1</translation>
    </message>
    <message>
        <source>The changes of these files are not saved, so the template does not have them:

%1</source>
        <translation>Die Änderungen dieser Dateien sind nicht gespeichert, deshalb hat die Vorlage sie nicht:

%1</translation>
    </message>
</context>
<context>
    <name>Templates</name>
    <message>
        <source>Assembler source</source>
        <translation>Assembler-Quelldatei</translation>
    </message>
    <message>
        <source>Creates a source file in assembly language with one function; it is preprocessed</source>
        <translation>Legt eine Assembler-Quelldatei mit einer Funktion an; sie durchläuft den Präprozessor</translation>
    </message>
    <message>
        <source>C source with header</source>
        <translation>C-Quelldatei mit Header</translation>
    </message>
    <message>
        <source>Creates a C source file and the header file that declares its functions</source>
        <translation>Legt eine C-Quelldatei und die Headerdatei mit den Deklarationen ihrer Funktionen an</translation>
    </message>
    <message>
        <source>C++ class</source>
        <translation>C++-Klasse</translation>
    </message>
    <message>
        <source>Creates the header file and the source file of a class</source>
        <translation>Legt die Headerdatei und die Quelldatei einer Klasse an</translation>
    </message>
    <message>
        <source>Linker script</source>
        <translation>Linkerskript</translation>
    </message>
    <message>
        <source>Creates a linker script for firmware with code in a ROM and data in a RAM</source>
        <translation>Legt ein Linkerskript für Firmware mit Code in einem ROM und Daten in einem RAM an</translation>
    </message>
    <message>
        <source>Python script</source>
        <translation>Python-Skript</translation>
    </message>
    <message>
        <source>Creates a Python script with a main function</source>
        <translation>Legt ein Python-Skript mit einer Funktion main an</translation>
    </message>
    <message>
        <source>AVR firmware</source>
        <translation>AVR-Firmware</translation>
    </message>
    <message>
        <source>Firmware for an ATmega328P with a timer interrupt and the serial port. It runs in the simulator simavr, which is started with the debugger. Needs the packages gcc-avr, avr-libc, gdb-avr and simavr.</source>
        <translation>Firmware für einen ATmega328P mit einem Timer-Interrupt und der seriellen Schnittstelle. Sie läuft im Simulator simavr, der mit dem Debugger gestartet wird. Braucht die Pakete gcc-avr, avr-libc, gdb-avr und simavr.</translation>
    </message>
    <message>
        <source>Cortex-M firmware</source>
        <translation>Cortex-M-Firmware</translation>
    </message>
    <message>
        <source>Firmware for a Cortex-M3 board that is emulated: start-up code, linker script, timer interrupt and serial port, without a C library. Needs the packages gcc-arm-none-eabi, gdb-multiarch and qemu-system-arm.</source>
        <translation>Firmware für eine emulierte Cortex-M3-Platine: Startcode, Linkerskript, Timer-Interrupt und serielle Schnittstelle, ohne C-Bibliothek. Braucht die Pakete gcc-arm-none-eabi, gdb-multiarch und qemu-system-arm.</translation>
    </message>
    <message>
        <source>Cortex-M firmware with printf</source>
        <translation>Cortex-M-Firmware mit printf</translation>
    </message>
    <message>
        <source>Firmware for a Cortex-M3 board that is emulated, with the C library newlib: printf writes to the target console. Needs the packages gcc-arm-none-eabi, libnewlib-arm-none-eabi, gdb-multiarch and qemu-system-arm.</source>
        <translation>Firmware für eine emulierte Cortex-M3-Platine, mit der C-Bibliothek newlib: printf schreibt in die Zielkonsole. Braucht die Pakete gcc-arm-none-eabi, libnewlib-arm-none-eabi, gdb-multiarch und qemu-system-arm.</translation>
    </message>
    <message>
        <source>RISC-V firmware</source>
        <translation>RISC-V-Firmware</translation>
    </message>
    <message>
        <source>Firmware for a 32-bit RISC-V board that is emulated: start-up code, linker script, timer interrupt and serial port, without a C library. Needs the packages gcc-riscv64-unknown-elf, gdb-multiarch and qemu-system-misc.</source>
        <translation>Firmware für eine emulierte 32-Bit-RISC-V-Platine: Startcode, Linkerskript, Timer-Interrupt und serielle Schnittstelle, ohne C-Bibliothek. Braucht die Pakete gcc-riscv64-unknown-elf, gdb-multiarch und qemu-system-misc.</translation>
    </message>
    <message>
        <source>Embedded firmware</source>
        <translation>Eingebettete Firmware</translation>
    </message>
    <message>
        <source>Programs for microcontrollers. Most of them run on a board that is emulated on this computer, so no hardware is needed.</source>
        <translation>Programme für Mikrocontroller. Die meisten laufen auf einer Platine, die auf diesem Rechner emuliert wird; es ist also keine Hardware nötig.</translation>
    </message>
    <message>
        <source>Two processors</source>
        <translation>Zwei Prozessoren</translation>
    </message>
    <message>
        <source>A workspace with the firmware of two Cortex-M3 boards that are emulated. They run and pause together, and send each other messages by their serial ports. Needs the packages gcc-arm-none-eabi, gdb-multiarch and qemu-system-arm.</source>
        <translation>Ein Arbeitsbereich mit der Firmware zweier emulierter Cortex-M3-Platinen. Sie laufen und halten gemeinsam und senden einander Nachrichten über ihre seriellen Schnittstellen. Braucht die Pakete gcc-arm-none-eabi, gdb-multiarch und qemu-system-arm.</translation>
    </message>
    <message>
        <source>C program</source>
        <translation>C-Programm</translation>
    </message>
    <message>
        <source>A program in C for this computer. Needs the packages gcc and gdb.</source>
        <translation>Ein Programm in C für diesen Rechner. Braucht die Pakete gcc und gdb.</translation>
    </message>
    <message>
        <source>C++ program</source>
        <translation>C++-Programm</translation>
    </message>
    <message>
        <source>A program in C++20 for this computer. Needs the packages g++ and gdb.</source>
        <translation>Ein Programm in C++20 für diesen Rechner. Braucht die Pakete g++ und gdb.</translation>
    </message>
    <message>
        <source>Static library</source>
        <translation>Statische Bibliothek</translation>
    </message>
    <message>
        <source>A library in C for this computer. Add it to the workspace of a program, and name it in the program&apos;s option &quot;Libraries of projects&quot;. Needs the package gcc.</source>
        <translation>Eine Bibliothek in C für diesen Rechner. Fügen Sie sie zum Arbeitsbereich eines Programms hinzu und nennen Sie sie in dessen Option &quot;Bibliotheken von Projekten&quot;. Braucht das Paket gcc.</translation>
    </message>
    <message>
        <source>Programs for this computer</source>
        <translation>Programme für diesen Rechner</translation>
    </message>
    <message>
        <source>Programs and libraries that run on this computer.</source>
        <translation>Programme und Bibliotheken, die auf diesem Rechner laufen.</translation>
    </message>
    <message>
        <source>Cortex-M firmware with two cores</source>
        <translation>Cortex-M-Firmware mit zwei Kernen</translation>
    </message>
    <message>
        <source>One program for both cores of an emulated Cortex-M33 board. The first core starts the second one, sends it numbers through the shared memory and writes the answers to the serial port. Needs the packages gcc-arm-none-eabi, gdb-multiarch and qemu-system-arm.</source>
        <translation>Ein Programm für beide Kerne einer emulierten Cortex-M33-Platine. Der erste Kern startet den zweiten, sendet ihm Zahlen durch den gemeinsamen Speicher und schreibt die Antworten auf die serielle Schnittstelle. Braucht die Pakete gcc-arm-none-eabi, gdb-multiarch und qemu-system-arm.</translation>
    </message>
    <message>
        <source>Your own Arm device</source>
        <translation>Ihr eigener Arm-Chip</translation>
    </message>
    <message>
        <source>Firmware for a Cortex-M chip of yours. Asks for its core, memories, SVD file and debug probe, and makes start-up code, vector table, linker script and the configuration of OpenOCD. Needs the packages gcc-arm-none-eabi, gdb-multiarch and openocd.</source>
        <translation>Firmware für einen eigenen Cortex-M-Chip. Fragt nach Kern, Speichern, SVD-Datei und Debug-Adapter und erzeugt Startcode, Vektortabelle, Linkerskript und die Konfiguration von OpenOCD. Braucht die Pakete gcc-arm-none-eabi, gdb-multiarch und openocd.</translation>
    </message>
    <message>
        <source>From an existing folder</source>
        <translation>Aus einem vorhandenen Ordner</translation>
    </message>
    <message>
        <source>A project for the sources in a folder. Include directories, definitions and flags are taken over from its Makefile, its CMake files or a compile_commands.json. Nothing is built there.</source>
        <translation>Ein Projekt für die Quellen in einem Ordner. Include-Verzeichnisse, Definitionen und Flags werden aus seinem Makefile, seinen CMake-Dateien oder einer compile_commands.json übernommen. Dort wird nichts erstellt.</translation>
    </message>
    <message>
        <source>Existing sources</source>
        <translation>Vorhandene Quellen</translation>
    </message>
    <message>
        <source>Projects for programs that exist already.</source>
        <translation>Projekte für Programme, die es schon gibt.</translation>
    </message>
    <message>
        <source>Script with a docked panel</source>
        <translation>Skript mit angedocktem Fenster</translation>
    </message>
    <message>
        <source>A program in C, and a Python script whose panel shows a variable of it at each stop. The script runs when the workspace is opened, after the question whether you trust its authors. Needs the packages gcc and gdb.</source>
        <translation>Ein Programm in C und ein Python-Skript, dessen Fenster bei jedem Halt eine Variable davon zeigt. Das Skript läuft beim Öffnen des Arbeitsbereichs, nach der Frage, ob Sie seinen Autoren vertrauen. Braucht die Pakete gcc und gdb.</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>A build environment for Varnel in C++, with a project that uses it. The debugger starts a second Varnel with the plug-in. Needs the packages varnel-sdk, qt6-base-dev, g++ and gdb.</source>
        <translation>Eine Build-Umgebung für Varnel in C++, mit einem Projekt, das sie benutzt. Der Debugger startet ein zweites Varnel mit dem Plug-in. Braucht die Pakete varnel-sdk, qt6-base-dev, g++ und gdb.</translation>
    </message>
    <message>
        <source>Extensions of Varnel</source>
        <translation>Erweiterungen von Varnel</translation>
    </message>
    <message>
        <source>Windows and plug-ins of your own.</source>
        <translation>Eigene Fenster und Plug-ins.</translation>
    </message>
</context>
<context>
    <name>TextDocument</name>
    <message>
        <source>The following file does not exist:
%1

Do you want to create it?</source>
        <translation>Die folgende Datei gibt es nicht:
%1

Möchten Sie sie anlegen?</translation>
    </message>
    <message>
        <source>The following file could not be opened:
%1</source>
        <translation>Die folgende Datei konnte nicht geöffnet werden:
%1</translation>
    </message>
    <message>
        <source>The following file could not be written:
%1

Please check that this file is not read-only and you have permission to write to it.</source>
        <translation>Die folgende Datei konnte nicht geschrieben werden:
%1

Bitte prüfen Sie, dass diese Datei nicht schreibgeschützt ist und Sie in sie schreiben dürfen.</translation>
    </message>
</context>
<context>
    <name>TextFormats</name>
    <message>
        <source>Text editor</source>
        <translation>Texteditor</translation>
    </message>
    <message>
        <source>Output window</source>
        <translation>Ausgabefenster</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsbereich</translation>
    </message>
    <message>
        <source>Standard text</source>
        <translation>Normaler Text</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>String</source>
        <translation>Zeichenkette</translation>
    </message>
    <message>
        <source>Reserved</source>
        <translation>Reserviert</translation>
    </message>
    <message>
        <source>Keyword</source>
        <translation>Schlüsselwort</translation>
    </message>
    <message>
        <source>Preprocessor</source>
        <translation>Präprozessor</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Normal text</source>
        <translation>Normaler Text</translation>
    </message>
</context>
<context>
    <name>TextSplitterWidget</name>
    <message>
        <source>Drag down to split the window</source>
        <translation>Nach unten ziehen, um das Fenster zu teilen</translation>
    </message>
</context>
<context>
    <name>TextViewEdit</name>
    <message>
        <source>Text of %1</source>
        <translation>Text von %1</translation>
    </message>
    <message>
        <source>Toggle Breakpoint	F9</source>
        <translation>Haltepunkt umschalten	F9</translation>
    </message>
</context>
<context>
    <name>TimePlot</name>
    <message>
        <source>no value</source>
        <translation>kein Wert</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>%1 to %2, values from %3 to %4</source>
        <translation>%1 bis %2, Werte von %3 bis %4</translation>
    </message>
    <message>
        <source>, paused</source>
        <translation>, angehalten</translation>
    </message>
    <message>
        <source>
%1 = %2 at %3</source>
        <translation>
%1 = %2 bei %3</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>More</source>
        <translation>Weiteres</translation>
    </message>
</context>
<context>
    <name>ToolProcess</name>
    <message>
        <source>Cannot run &apos;%1&apos;: %2</source>
        <translation>&apos;%1&apos; kann nicht ausgeführt werden: %2</translation>
    </message>
</context>
<context>
    <name>ToolsCommands</name>
    <message>
        <source>Stop %1</source>
        <translation>%1 beenden</translation>
    </message>
</context>
<context>
    <name>ToolsDialog</name>
    <message>
        <source>New Tool</source>
        <translation>Neues Werkzeug</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Executable Files (*.exe *.com *.bat);;All Files (*.*)</source>
        <translation>Ausführbare Dateien (*.exe *.com *.bat);;Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
</context>
<context>
    <name>ToolsDialogBase</name>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Tools:</source>
        <translation>Werkzeuge:</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Ends the process of the selected tool</source>
        <translation>Beendet den Prozess des ausgewählten Werkzeugs</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Tool name:</source>
        <translation>Name des Werkzeugs:</translation>
    </message>
    <message>
        <source>Command:</source>
        <translation>Befehl:</translation>
    </message>
    <message>
        <source>Choose a program</source>
        <translation>Programm wählen</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Argumente:</translation>
    </message>
    <message>
        <source>Insert a macro into the arguments</source>
        <translation>Makro in die Argumente einfügen</translation>
    </message>
    <message>
        <source>Initial directory:</source>
        <translation>Startverzeichnis:</translation>
    </message>
    <message>
        <source>Insert a macro into the initial directory</source>
        <translation>Makro in das Startverzeichnis einfügen</translation>
    </message>
</context>
<context>
    <name>UiConfig</name>
    <message>
        <source>New File</source>
        <comment>fileNew</comment>
        <translation>Neue Datei</translation>
    </message>
    <message>
        <source>&amp;New File...</source>
        <comment>fileNew</comment>
        <translation>&amp;Neue Datei...</translation>
    </message>
    <message>
        <source>Creates a source file</source>
        <comment>fileNew</comment>
        <translation>Legt eine Quelldatei an</translation>
    </message>
    <message>
        <source>Creates a source file of a kind and with a name that you choose, and opens it in the editor. With a project open it can be added to that project at once.</source>
        <comment>fileNew</comment>
        <translation>Legt eine Quelldatei einer Art und mit einem Namen Ihrer Wahl an und öffnet sie im Editor. Ist ein Projekt geöffnet, kann sie gleich hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Open File</source>
        <comment>fileOpen</comment>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>&amp;Open File...</source>
        <comment>fileOpen</comment>
        <translation>Datei &amp;öffnen...</translation>
    </message>
    <message>
        <source>Opens one or more files</source>
        <comment>fileOpen</comment>
        <translation>Öffnet eine oder mehrere Dateien</translation>
    </message>
    <message>
        <source>Opens one or more files in the editor. Files above 10 million bytes open in a read-only viewer.</source>
        <comment>fileOpen</comment>
        <translation>Öffnet eine oder mehrere Dateien im Editor. Dateien über 10 Millionen Bytes öffnen sich in einer Ansicht nur zum Lesen.</translation>
    </message>
    <message>
        <source>Close File</source>
        <comment>fileClose</comment>
        <translation>Datei schließen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <comment>fileClose</comment>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Closes the current file</source>
        <comment>fileClose</comment>
        <translation>Schließt die aktuelle Datei</translation>
    </message>
    <message>
        <source>Closes every window of the current file. A file with changes asks first whether they are to be saved.</source>
        <comment>fileClose</comment>
        <translation>Schließt alle Fenster der aktuellen Datei. Bei einer geänderten Datei wird zuerst gefragt, ob sie gespeichert werden soll.</translation>
    </message>
    <message>
        <source>Close All Files</source>
        <comment>fileCloseAll</comment>
        <translation>Alle Dateien schließen</translation>
    </message>
    <message>
        <source>Clos&amp;e All</source>
        <comment>fileCloseAll</comment>
        <translation>&amp;Alle schließen</translation>
    </message>
    <message>
        <source>Closes all files</source>
        <comment>fileCloseAll</comment>
        <translation>Schließt alle Dateien</translation>
    </message>
    <message>
        <source>Closes the windows of all files, one after the other. A file with changes asks first whether they are to be saved.</source>
        <comment>fileCloseAll</comment>
        <translation>Schließt die Fenster aller Dateien nacheinander. Bei einer geänderten Datei wird zuerst gefragt, ob sie gespeichert werden soll.</translation>
    </message>
    <message>
        <source>Save</source>
        <comment>fileSave</comment>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <comment>fileSave</comment>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Saves the current file</source>
        <comment>fileSave</comment>
        <translation>Speichert die aktuelle Datei</translation>
    </message>
    <message>
        <source>Save As</source>
        <comment>fileSaveAs</comment>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <comment>fileSaveAs</comment>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Saves the current file under another name</source>
        <comment>fileSaveAs</comment>
        <translation>Speichert die aktuelle Datei unter einem anderen Namen</translation>
    </message>
    <message>
        <source>Writes the current file to disk under a name and in a folder that you choose.</source>
        <comment>fileSaveAs</comment>
        <translation>Schreibt die aktuelle Datei unter einem Namen und in einen Ordner Ihrer Wahl.</translation>
    </message>
    <message>
        <source>Save All</source>
        <comment>fileSaveAll</comment>
        <translation>Alles speichern</translation>
    </message>
    <message>
        <source>Save A&amp;ll</source>
        <comment>fileSaveAll</comment>
        <translation>A&amp;lles speichern</translation>
    </message>
    <message>
        <source>Saves all changed files, projects and the workspace</source>
        <comment>fileSaveAll</comment>
        <translation>Speichert alle geänderten Dateien, Projekte und den Arbeitsbereich</translation>
    </message>
    <message>
        <source>Writes all changed files to disk, and with a workspace open the changed projects and the workspace as well. The same happens before each build and debug session.</source>
        <comment>fileSaveAll</comment>
        <translation>Schreibt alle geänderten Dateien auf den Datenträger und, wenn ein Arbeitsbereich geöffnet ist, auch die geänderten Projekte und den Arbeitsbereich. Dasselbe geschieht vor jedem Build und jeder Debug-Sitzung.</translation>
    </message>
    <message>
        <source>Print</source>
        <comment>filePrint</comment>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <comment>filePrint</comment>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>Prints the current view</source>
        <comment>filePrint</comment>
        <translation>Druckt die aktuelle Ansicht</translation>
    </message>
    <message>
        <source>Exit</source>
        <comment>fileExit</comment>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <comment>fileExit</comment>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Leaves Varnel</source>
        <comment>fileExit</comment>
        <translation>Beendet Varnel</translation>
    </message>
    <message>
        <source>Stops a running build, closes all windows and the workspace and leaves Varnel. Whatever has changed asks first whether it is to be saved.</source>
        <comment>fileExit</comment>
        <translation>Bricht einen laufenden Build ab, schließt alle Fenster und den Arbeitsbereich und beendet Varnel. Bei allem, was geändert wurde, wird zuerst gefragt, ob es gespeichert werden soll.</translation>
    </message>
    <message>
        <source>File Properties</source>
        <comment>fileProperties</comment>
        <translation>Dateieigenschaften</translation>
    </message>
    <message>
        <source>File Propert&amp;ies...</source>
        <comment>fileProperties</comment>
        <translation>Datei&amp;eigenschaften...</translation>
    </message>
    <message>
        <source>Shows the properties of the file selected in the navigator</source>
        <comment>fileProperties</comment>
        <translation>Zeigt die Eigenschaften der im Navigator ausgewählten Datei</translation>
    </message>
    <message>
        <source>Shows and changes the properties of the file that is selected on the Files page of the navigator. Available while a project is open and nothing is being built or debugged.</source>
        <comment>fileProperties</comment>
        <translation>Zeigt und ändert die Eigenschaften der Datei, die auf der Seite &quot;Dateien&quot; des Navigators ausgewählt ist. Verfügbar, während ein Projekt geöffnet ist und nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Revert</source>
        <comment>fileRevert</comment>
        <translation>Zurückkehren</translation>
    </message>
    <message>
        <source>Re&amp;vert to Saved</source>
        <comment>fileRevert</comment>
        <translation>&amp;Zur gespeicherten Fassung</translation>
    </message>
    <message>
        <source>Reloads the current file and drops its changes</source>
        <comment>fileRevert</comment>
        <translation>Lädt die aktuelle Datei neu und verwirft ihre Änderungen</translation>
    </message>
    <message>
        <source>Reads the current file from disk again. All changes since it was last saved are lost, so you are asked first.</source>
        <comment>fileRevert</comment>
        <translation>Liest die aktuelle Datei noch einmal vom Datenträger. Alle Änderungen seit dem letzten Speichern gehen verloren, darum werden Sie zuerst gefragt.</translation>
    </message>
    <message>
        <source>Undo</source>
        <comment>editUndo</comment>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <comment>editUndo</comment>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Undoes the last change</source>
        <comment>editUndo</comment>
        <translation>Macht die letzte Änderung rückgängig</translation>
    </message>
    <message>
        <source>Takes back the last change of the current file. Available while there is a change to take back.</source>
        <comment>editUndo</comment>
        <translation>Nimmt die letzte Änderung der aktuellen Datei zurück. Verfügbar, solange es eine solche Änderung gibt.</translation>
    </message>
    <message>
        <source>Redo</source>
        <comment>editRedo</comment>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <comment>editRedo</comment>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Makes the last undone change again</source>
        <comment>editRedo</comment>
        <translation>Macht die letzte rückgängig gemachte Änderung noch einmal</translation>
    </message>
    <message>
        <source>Makes the change again that Undo took back last. Available until the file is changed in another way.</source>
        <comment>editRedo</comment>
        <translation>Macht die Änderung noch einmal, die zuletzt rückgängig gemacht wurde. Verfügbar, bis die Datei auf andere Weise geändert wird.</translation>
    </message>
    <message>
        <source>Cut</source>
        <comment>editCut</comment>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <comment>editCut</comment>
        <translation>A&amp;usschneiden</translation>
    </message>
    <message>
        <source>Moves the selection to the clipboard</source>
        <comment>editCut</comment>
        <translation>Verschiebt die Auswahl in die Zwischenablage</translation>
    </message>
    <message>
        <source>Moves the selected text to the clipboard. In the navigator it takes the selected files and folders out of their project, to be pasted elsewhere; nothing is deleted on disk.</source>
        <comment>editCut</comment>
        <translation>Verschiebt den ausgewählten Text in die Zwischenablage. Im Navigator nimmt der Befehl die ausgewählten Dateien und Ordner aus ihrem Projekt, um sie anderswo einzufügen; auf dem Datenträger wird nichts gelöscht.</translation>
    </message>
    <message>
        <source>Copy</source>
        <comment>editCopy</comment>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <comment>editCopy</comment>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies the selection to the clipboard</source>
        <comment>editCopy</comment>
        <translation>Kopiert die Auswahl in die Zwischenablage</translation>
    </message>
    <message>
        <source>Paste</source>
        <comment>editPaste</comment>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>P&amp;aste</source>
        <comment>editPaste</comment>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Inserts the contents of the clipboard</source>
        <comment>editPaste</comment>
        <translation>Fügt den Inhalt der Zwischenablage ein</translation>
    </message>
    <message>
        <source>Inserts the text of the clipboard at the cursor. In the navigator it adds the files and folders that were cut there to the selected project or folder.</source>
        <comment>editPaste</comment>
        <translation>Fügt den Text der Zwischenablage am Cursor ein. Im Navigator fügt der Befehl die dort ausgeschnittenen Dateien und Ordner zum ausgewählten Projekt oder Ordner hinzu.</translation>
    </message>
    <message>
        <source>Delete</source>
        <comment>editRemove</comment>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <comment>editRemove</comment>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Deletes the selection</source>
        <comment>editRemove</comment>
        <translation>Löscht die Auswahl</translation>
    </message>
    <message>
        <source>Insert File</source>
        <comment>editInsertFile</comment>
        <translation>Datei einfügen</translation>
    </message>
    <message>
        <source>In&amp;sert File...</source>
        <comment>editInsertFile</comment>
        <translation>&amp;Datei einfügen...</translation>
    </message>
    <message>
        <source>Inserts a file at the cursor</source>
        <comment>editInsertFile</comment>
        <translation>Fügt eine Datei am Cursor ein</translation>
    </message>
    <message>
        <source>Inserts the contents of a file that you choose at the cursor of the current text window.</source>
        <comment>editInsertFile</comment>
        <translation>Fügt den Inhalt einer Datei Ihrer Wahl am Cursor des aktuellen Textfensters ein.</translation>
    </message>
    <message>
        <source>Comment</source>
        <comment>editComment</comment>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>&amp;Comment</source>
        <comment>editComment</comment>
        <translation>&amp;Kommentieren</translation>
    </message>
    <message>
        <source>Turns the selected lines into comments</source>
        <comment>editComment</comment>
        <translation>Macht die ausgewählten Zeilen zu Kommentaren</translation>
    </message>
    <message>
        <source>Turns the selected lines, or the line of the cursor, into comments. Available for languages with comments that end with the line, such as C++ and Python.</source>
        <comment>editComment</comment>
        <translation>Macht die ausgewählten Zeilen oder die Zeile des Cursors zu Kommentaren. Verfügbar für Sprachen mit Kommentaren bis zum Zeilenende, wie C++ und Python.</translation>
    </message>
    <message>
        <source>Uncomment</source>
        <comment>editUncomment</comment>
        <translation>Kommentar aufheben</translation>
    </message>
    <message>
        <source>Unco&amp;mment</source>
        <comment>editUncomment</comment>
        <translation>K&amp;ommentar aufheben</translation>
    </message>
    <message>
        <source>Turns comments into code</source>
        <comment>editUncomment</comment>
        <translation>Macht Kommentare zu Code</translation>
    </message>
    <message>
        <source>Removes the sign of a comment from the selected lines, or from the line of the cursor.</source>
        <comment>editUncomment</comment>
        <translation>Entfernt das Kommentarzeichen aus den ausgewählten Zeilen oder aus der Zeile des Cursors.</translation>
    </message>
    <message>
        <source>Indent</source>
        <comment>editIndent</comment>
        <translation>Einrücken</translation>
    </message>
    <message>
        <source>&amp;Indent</source>
        <comment>editIndent</comment>
        <translation>&amp;Einrücken</translation>
    </message>
    <message>
        <source>Indents the selected lines</source>
        <comment>editIndent</comment>
        <translation>Rückt die ausgewählten Zeilen ein</translation>
    </message>
    <message>
        <source>Indents the lines of the selection, or the line of the cursor, as the language and the lines above ask for. The manner of indentation is chosen in Tools, Options.</source>
        <comment>editIndent</comment>
        <translation>Rückt die Zeilen der Auswahl oder die Zeile des Cursors so ein, wie es die Sprache und die Zeilen darüber verlangen. Die Art der Einrückung wird unter Extras, Optionen gewählt.</translation>
    </message>
    <message>
        <source>Unindent</source>
        <comment>editUnindent</comment>
        <translation>Ausrücken</translation>
    </message>
    <message>
        <source>&amp;Unindent</source>
        <comment>editUnindent</comment>
        <translation>&amp;Ausrücken</translation>
    </message>
    <message>
        <source>Takes away one level of indentation</source>
        <comment>editUnindent</comment>
        <translation>Nimmt eine Stufe der Einrückung weg</translation>
    </message>
    <message>
        <source>Takes one level of indentation away from the selected lines, or from the line of the cursor. Shift+Tab in the editor does the same.</source>
        <comment>editUnindent</comment>
        <translation>Nimmt eine Stufe der Einrückung von den ausgewählten Zeilen oder von der Zeile des Cursors weg. Umschalt+Tab im Editor bewirkt dasselbe.</translation>
    </message>
    <message>
        <source>Find</source>
        <comment>editFind</comment>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <comment>editFind</comment>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>Finds text in the current view</source>
        <comment>editFind</comment>
        <translation>Sucht Text in der aktuellen Ansicht</translation>
    </message>
    <message>
        <source>Finds text in the current window, forward or backward. The box beside the button finds text while you type, and Enter in the box finds the next place.</source>
        <comment>editFind</comment>
        <translation>Sucht Text im aktuellen Fenster, vorwärts oder rückwärts. Das Feld neben der Schaltfläche sucht schon beim Tippen, und die Eingabetaste darin findet die nächste Stelle.</translation>
    </message>
    <message>
        <source>Replace</source>
        <comment>editReplace</comment>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>R&amp;eplace...</source>
        <comment>editReplace</comment>
        <translation>Erset&amp;zen...</translation>
    </message>
    <message>
        <source>Replaces text in the current file</source>
        <comment>editReplace</comment>
        <translation>Ersetzt Text in der aktuellen Datei</translation>
    </message>
    <message>
        <source>Finds text in the current text window and replaces it, place by place, in the whole file or in the selection.</source>
        <comment>editReplace</comment>
        <translation>Sucht Text im aktuellen Textfenster und ersetzt ihn, Stelle für Stelle, in der ganzen Datei oder in der Auswahl.</translation>
    </message>
    <message>
        <source>Find in Files</source>
        <comment>editFindInFiles</comment>
        <translation>In Dateien suchen</translation>
    </message>
    <message>
        <source>Find in F&amp;iles...</source>
        <comment>editFindInFiles</comment>
        <translation>&amp;In Dateien suchen...</translation>
    </message>
    <message>
        <source>Finds text in the files of a folder</source>
        <comment>editFindInFiles</comment>
        <translation>Sucht Text in den Dateien eines Ordners</translation>
    </message>
    <message>
        <source>Finds text or a regular expression in the files of a folder. The matches are listed on the Find In Files page of the output window.</source>
        <comment>editFindInFiles</comment>
        <translation>Sucht Text oder einen regulären Ausdruck in den Dateien eines Ordners. Die Treffer stehen auf der Seite &quot;In Dateien suchen&quot; des Ausgabefensters.</translation>
    </message>
    <message>
        <source>Select All</source>
        <comment>editSelectAll</comment>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Select A&amp;ll</source>
        <comment>editSelectAll</comment>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Selects all text</source>
        <comment>editSelectAll</comment>
        <translation>Wählt den ganzen Text aus</translation>
    </message>
    <message>
        <source>Selects all text of the current window or, when it has the keyboard, of the current page of the output window.</source>
        <comment>editSelectAll</comment>
        <translation>Wählt den ganzen Text des aktuellen Fensters aus oder, wenn sie die Tastatur hat, der aktuellen Seite des Ausgabefensters.</translation>
    </message>
    <message>
        <source>Next Output Line</source>
        <comment>editLookupNextLine</comment>
        <translation>Nächste Ausgabezeile</translation>
    </message>
    <message>
        <source>&amp;Next Output Line</source>
        <comment>editLookupNextLine</comment>
        <translation>&amp;Nächste Ausgabezeile</translation>
    </message>
    <message>
        <source>Goes to the source of the next output line</source>
        <comment>editLookupNextLine</comment>
        <translation>Geht zur Quelle der nächsten Ausgabezeile</translation>
    </message>
    <message>
        <source>Moves on by one line on the current page of the output window. When that line names a place in a source file, such as a build error or a match, the file is opened there.</source>
        <comment>editLookupNextLine</comment>
        <translation>Geht auf der aktuellen Seite des Ausgabefensters eine Zeile weiter. Nennt diese Zeile eine Stelle in einer Quelldatei, etwa ein Fehler beim Erstellen oder ein Treffer, wird die Datei dort geöffnet.</translation>
    </message>
    <message>
        <source>Next Message</source>
        <comment>editNextMessage</comment>
        <translation>Nächste Meldung</translation>
    </message>
    <message>
        <source>Next &amp;Message</source>
        <comment>editNextMessage</comment>
        <translation>Nächste &amp;Meldung</translation>
    </message>
    <message>
        <source>Goes to the source of the next error, warning or match</source>
        <comment>editNextMessage</comment>
        <translation>Geht zur Quelle des nächsten Fehlers, der nächsten Warnung oder des nächsten Treffers</translation>
    </message>
    <message>
        <source>Goes to the next line of the current page of the output window that names a place in a source file, and opens the file there. On the build page these are the errors and warnings.</source>
        <comment>editNextMessage</comment>
        <translation>Geht zur nächsten Zeile der aktuellen Seite des Ausgabefensters, die eine Stelle in einer Quelldatei nennt, und öffnet die Datei dort. Auf der Seite &quot;Erstellen&quot; sind das die Fehler und Warnungen.</translation>
    </message>
    <message>
        <source>Previous Message</source>
        <comment>editPreviousMessage</comment>
        <translation>Vorige Meldung</translation>
    </message>
    <message>
        <source>Pre&amp;vious Message</source>
        <comment>editPreviousMessage</comment>
        <translation>&amp;Vorige Meldung</translation>
    </message>
    <message>
        <source>Goes to the source of the previous error, warning or match</source>
        <comment>editPreviousMessage</comment>
        <translation>Geht zur Quelle des vorigen Fehlers, der vorigen Warnung oder des vorigen Treffers</translation>
    </message>
    <message>
        <source>As Next Message, in the other direction.</source>
        <comment>editPreviousMessage</comment>
        <translation>Wie &quot;Nächste Meldung&quot;, in der anderen Richtung.</translation>
    </message>
    <message>
        <source>Find Next</source>
        <comment>editFindNext</comment>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>Find Ne&amp;xt</source>
        <comment>editFindNext</comment>
        <translation>Wei&amp;tersuchen</translation>
    </message>
    <message>
        <source>Finds the text of the last search again</source>
        <comment>editFindNext</comment>
        <translation>Sucht den Text der letzten Suche noch einmal</translation>
    </message>
    <message>
        <source>Finds the text of the last search again, from the cursor on, without a dialog. Without a last search the dialog Find is opened.</source>
        <comment>editFindNext</comment>
        <translation>Sucht den Text der letzten Suche ohne Dialog noch einmal, vom Cursor an. Ohne eine letzte Suche öffnet sich der Dialog &quot;Suchen&quot;.</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <comment>editFindPrevious</comment>
        <translation>Rückwärts suchen</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <comment>editFindPrevious</comment>
        <translation>Rü&amp;ckwärts suchen</translation>
    </message>
    <message>
        <source>Finds the text of the last search before the cursor</source>
        <comment>editFindPrevious</comment>
        <translation>Sucht den Text der letzten Suche vor dem Cursor</translation>
    </message>
    <message>
        <source>As Find Next, in the other direction.</source>
        <comment>editFindPrevious</comment>
        <translation>Wie &quot;Weitersuchen&quot;, in der anderen Richtung.</translation>
    </message>
    <message>
        <source>Stop Finding in Files</source>
        <comment>editStopFindInFiles</comment>
        <translation>Suche in Dateien abbrechen</translation>
    </message>
    <message>
        <source>Stop Findin&amp;g in Files</source>
        <comment>editStopFindInFiles</comment>
        <translation>Suche in Dateien a&amp;bbrechen</translation>
    </message>
    <message>
        <source>Stops the search in files</source>
        <comment>editStopFindInFiles</comment>
        <translation>Bricht die Suche in Dateien ab</translation>
    </message>
    <message>
        <source>Stops the search in files. The matches that were found stay in the output window.</source>
        <comment>editStopFindInFiles</comment>
        <translation>Bricht die Suche in Dateien ab. Die gefundenen Treffer bleiben im Ausgabefenster.</translation>
    </message>
    <message>
        <source>Go to Line</source>
        <comment>viewGotoLine</comment>
        <translation>Gehe zu Zeile</translation>
    </message>
    <message>
        <source>&amp;Go to Line...</source>
        <comment>viewGotoLine</comment>
        <translation>&amp;Gehe zu Zeile...</translation>
    </message>
    <message>
        <source>Goes to a line of the current view</source>
        <comment>viewGotoLine</comment>
        <translation>Geht zu einer Zeile der aktuellen Ansicht</translation>
    </message>
    <message>
        <source>Moves the cursor to a line that you enter. In a debug session the name of a symbol goes to its address, and in a disassembly a number with 0x before it is an address.</source>
        <comment>viewGotoLine</comment>
        <translation>Setzt den Cursor auf eine Zeile, die Sie eingeben. In einer Debug-Sitzung führt der Name eines Symbols zu seiner Adresse, und in einem Disassembly ist eine Zahl mit 0x davor eine Adresse.</translation>
    </message>
    <message>
        <source>Navigator</source>
        <comment>viewNavigator</comment>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>&amp;Navigator</source>
        <comment>viewNavigator</comment>
        <translation>&amp;Navigator</translation>
    </message>
    <message>
        <source>Shows or hides the navigator</source>
        <comment>viewNavigator</comment>
        <translation>Zeigt oder verbirgt den Navigator</translation>
    </message>
    <message>
        <source>Shows or hides the navigator, the window with the files of the workspace and the contents of the help.</source>
        <comment>viewNavigator</comment>
        <translation>Zeigt oder verbirgt den Navigator, das Fenster mit den Dateien des Arbeitsbereichs und dem Inhalt der Hilfe.</translation>
    </message>
    <message>
        <source>Output</source>
        <comment>viewOutput</comment>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>&amp;Output</source>
        <comment>viewOutput</comment>
        <translation>&amp;Ausgabe</translation>
    </message>
    <message>
        <source>Shows or hides the output window</source>
        <comment>viewOutput</comment>
        <translation>Zeigt oder verbirgt das Ausgabefenster</translation>
    </message>
    <message>
        <source>Shows or hides the output window with its pages for builds, debugging, matches and the Python command line.</source>
        <comment>viewOutput</comment>
        <translation>Zeigt oder verbirgt das Ausgabefenster mit seinen Seiten für Builds, Debuggen, Treffer und die Python-Befehlszeile.</translation>
    </message>
    <message>
        <source>New Project</source>
        <comment>projectNew</comment>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>&amp;New Project...</source>
        <comment>projectNew</comment>
        <translation>&amp;Neues Projekt...</translation>
    </message>
    <message>
        <source>Creates a project from a template</source>
        <comment>projectNew</comment>
        <translation>Legt ein Projekt nach einer Vorlage an</translation>
    </message>
    <message>
        <source>Creates a project from a template, in a workspace of its own or in the open one. Available while nothing is being built or debugged.</source>
        <comment>projectNew</comment>
        <translation>Legt ein Projekt nach einer Vorlage an, in einem eigenen Arbeitsbereich oder im geöffneten. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Open Workspace</source>
        <comment>projectOpen</comment>
        <translation>Arbeitsbereich öffnen</translation>
    </message>
    <message>
        <source>&amp;Open Workspace...</source>
        <comment>projectOpen</comment>
        <translation>Arbeitsbereich &amp;öffnen...</translation>
    </message>
    <message>
        <source>Opens a workspace or a project</source>
        <comment>projectOpen</comment>
        <translation>Öffnet einen Arbeitsbereich oder ein Projekt</translation>
    </message>
    <message>
        <source>Closes the open workspace and opens another. A project that is chosen instead opens in a workspace beside its file, which is created when there is none. Available while nothing is being built or debugged.</source>
        <comment>projectOpen</comment>
        <translation>Schließt den geöffneten Arbeitsbereich und öffnet einen anderen. Wird stattdessen ein Projekt gewählt, öffnet es sich in einem Arbeitsbereich neben seiner Datei, der nötigenfalls angelegt wird. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Repopulate</source>
        <comment>projectRepopulate</comment>
        <translation>Neu füllen</translation>
    </message>
    <message>
        <source>Repop&amp;ulate</source>
        <comment>projectRepopulate</comment>
        <translation>Neu &amp;füllen</translation>
    </message>
    <message>
        <source>Fills the project with files anew</source>
        <comment>projectRepopulate</comment>
        <translation>Füllt das Projekt neu mit Dateien</translation>
    </message>
    <message>
        <source>Lets the build environment of the current project fill it with files anew. Shown only when a project of the workspace has a build environment that can do so.</source>
        <comment>projectRepopulate</comment>
        <translation>Lässt die Build-Umgebung des aktuellen Projekts es neu mit Dateien füllen. Wird nur gezeigt, wenn ein Projekt des Arbeitsbereichs eine Build-Umgebung hat, die das kann.</translation>
    </message>
    <message>
        <source>Generate Makefile</source>
        <comment>projectGenerateMakefile</comment>
        <translation>Makefile erzeugen</translation>
    </message>
    <message>
        <source>&amp;Generate Makefile</source>
        <comment>projectGenerateMakefile</comment>
        <translation>&amp;Makefile erzeugen</translation>
    </message>
    <message>
        <source>Close Workspace</source>
        <comment>projectClose</comment>
        <translation>Arbeitsbereich schließen</translation>
    </message>
    <message>
        <source>&amp;Close Workspace</source>
        <comment>projectClose</comment>
        <translation>Arbeitsbereich s&amp;chließen</translation>
    </message>
    <message>
        <source>Closes the workspace with its projects and files</source>
        <comment>projectClose</comment>
        <translation>Schließt den Arbeitsbereich mit seinen Projekten und Dateien</translation>
    </message>
    <message>
        <source>Closes the workspace with all its projects and all windows. Whatever has changed asks first whether it is to be saved. Available while nothing is being built or debugged.</source>
        <comment>projectClose</comment>
        <translation>Schließt den Arbeitsbereich mit allen Projekten und allen Fenstern. Bei allem, was geändert wurde, wird zuerst gefragt, ob es gespeichert werden soll. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Save Workspace</source>
        <comment>projectSave</comment>
        <translation>Arbeitsbereich speichern</translation>
    </message>
    <message>
        <source>&amp;Save Workspace</source>
        <comment>projectSave</comment>
        <translation>Arbeitsbereich &amp;speichern</translation>
    </message>
    <message>
        <source>Saves the workspace and all its projects</source>
        <comment>projectSave</comment>
        <translation>Speichert den Arbeitsbereich und alle seine Projekte</translation>
    </message>
    <message>
        <source>Writes the workspace and all its projects to disk. Open source files are not saved. Available while nothing is being built or debugged.</source>
        <comment>projectSave</comment>
        <translation>Schreibt den Arbeitsbereich und alle seine Projekte auf den Datenträger. Offene Quelldateien werden nicht gespeichert. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Add Files to Project</source>
        <comment>projectInsertFiles</comment>
        <translation>Dateien zum Projekt hinzufügen</translation>
    </message>
    <message>
        <source>Add &amp;Files to Project...</source>
        <comment>projectInsertFiles</comment>
        <translation>&amp;Dateien zum Projekt hinzufügen...</translation>
    </message>
    <message>
        <source>Adds existing files to the current project</source>
        <comment>projectInsertFiles</comment>
        <translation>Fügt vorhandene Dateien zum aktuellen Projekt hinzu</translation>
    </message>
    <message>
        <source>Adds existing files to the current project. Each goes into the folder of the project that is meant for its extension. Available while nothing is being built or debugged.</source>
        <comment>projectInsertFiles</comment>
        <translation>Fügt vorhandene Dateien zum aktuellen Projekt hinzu. Jede kommt in den Ordner des Projekts, der für ihre Endung vorgesehen ist. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Add Files to Selected Project</source>
        <comment>projectInsertFilesAlt</comment>
        <translation>Dateien zum ausgewählten Projekt hinzufügen</translation>
    </message>
    <message>
        <source>Add &amp;Files to Project...</source>
        <comment>projectInsertFilesAlt</comment>
        <translation>&amp;Dateien zum Projekt hinzufügen...</translation>
    </message>
    <message>
        <source>Adds existing files to the selected project</source>
        <comment>projectInsertFilesAlt</comment>
        <translation>Fügt vorhandene Dateien zum ausgewählten Projekt hinzu</translation>
    </message>
    <message>
        <source>Adds existing files to the project that is selected in the navigator. Available while nothing is being built or debugged.</source>
        <comment>projectInsertFilesAlt</comment>
        <translation>Fügt vorhandene Dateien zu dem Projekt hinzu, das im Navigator ausgewählt ist. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Insert Project</source>
        <comment>projectInsertProject</comment>
        <translation>Projekt einfügen</translation>
    </message>
    <message>
        <source>&amp;Insert Project into Workspace...</source>
        <comment>projectInsertProject</comment>
        <translation>&amp;Projekt in den Arbeitsbereich einfügen...</translation>
    </message>
    <message>
        <source>Adds an existing project to the workspace</source>
        <comment>projectInsertProject</comment>
        <translation>Fügt ein vorhandenes Projekt zum Arbeitsbereich hinzu</translation>
    </message>
    <message>
        <source>Adds an existing project to the open workspace, for instance the project of another processor of the same system. Available while nothing is being built or debugged.</source>
        <comment>projectInsertProject</comment>
        <translation>Fügt ein vorhandenes Projekt zum geöffneten Arbeitsbereich hinzu, zum Beispiel das Projekt eines anderen Prozessors desselben Systems. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Project Properties</source>
        <comment>projectProperties</comment>
        <translation>Projekteigenschaften</translation>
    </message>
    <message>
        <source>Project Proper&amp;ties...</source>
        <comment>projectProperties</comment>
        <translation>Projekt&amp;eigenschaften...</translation>
    </message>
    <message>
        <source>Shows the properties of the current project</source>
        <comment>projectProperties</comment>
        <translation>Zeigt die Eigenschaften des aktuellen Projekts</translation>
    </message>
    <message>
        <source>Shows and changes the properties of the current project, as its build environment and its execution environment offer them. Available while nothing is being built or debugged.</source>
        <comment>projectProperties</comment>
        <translation>Zeigt und ändert die Eigenschaften des aktuellen Projekts, wie seine Build-Umgebung und seine Ausführungsumgebung sie anbieten. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Properties of Selected Project</source>
        <comment>projectPropertiesAlt</comment>
        <translation>Eigenschaften des ausgewählten Projekts</translation>
    </message>
    <message>
        <source>Pr&amp;operties...</source>
        <comment>projectPropertiesAlt</comment>
        <translation>E&amp;igenschaften...</translation>
    </message>
    <message>
        <source>Shows the properties of the selected project</source>
        <comment>projectPropertiesAlt</comment>
        <translation>Zeigt die Eigenschaften des ausgewählten Projekts</translation>
    </message>
    <message>
        <source>Shows and changes the properties of the project that is selected in the navigator. Available while nothing is being built or debugged.</source>
        <comment>projectPropertiesAlt</comment>
        <translation>Zeigt und ändert die Eigenschaften des Projekts, das im Navigator ausgewählt ist. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Forget Trust in Scripts</source>
        <comment>projectForgetTrust</comment>
        <translation>Vertrauen in Skripte vergessen</translation>
    </message>
    <message>
        <source>Forget Trust in Scri&amp;pts</source>
        <comment>projectForgetTrust</comment>
        <translation>&amp;Vertrauen in Skripte vergessen</translation>
    </message>
    <message>
        <source>Forgets whether the scripts of workspaces in this folder may run</source>
        <comment>projectForgetTrust</comment>
        <translation>Vergisst, ob die Skripte von Arbeitsbereichen in diesem Ordner laufen dürfen</translation>
    </message>
    <message>
        <source>Forgets the answer to the question whether you trust the authors of the files in the folder of the workspace. It is asked again when a workspace in this folder is opened that names Python files to be run. Available while nothing is being built or debugged.</source>
        <comment>projectForgetTrust</comment>
        <translation>Vergisst die Antwort auf die Frage, ob Sie den Autoren der Dateien im Ordner des Arbeitsbereichs vertrauen. Sie wird wieder gestellt, wenn in diesem Ordner ein Arbeitsbereich geöffnet wird, der Python-Dateien nennt, die laufen sollen. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Compile</source>
        <comment>buildCompileFile</comment>
        <translation>Übersetzen</translation>
    </message>
    <message>
        <source>&amp;Compile %1</source>
        <comment>buildCompileFile</comment>
        <translation>%1 &amp;übersetzen</translation>
    </message>
    <message>
        <source>Compiles the current file</source>
        <comment>buildCompileFile</comment>
        <translation>Übersetzt die aktuelle Datei</translation>
    </message>
    <message>
        <source>Saves and compiles the current file alone, or the file that was selected last in the navigator. Available when the file belongs to a project whose build environment can compile it.</source>
        <comment>buildCompileFile</comment>
        <translation>Speichert und übersetzt nur die aktuelle Datei oder die Datei, die zuletzt im Navigator ausgewählt wurde. Verfügbar, wenn die Datei zu einem Projekt gehört, dessen Build-Umgebung sie übersetzen kann.</translation>
    </message>
    <message>
        <source>Build</source>
        <comment>buildBuild</comment>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>&amp;Build</source>
        <comment>buildBuild</comment>
        <translation>&amp;Erstellen</translation>
    </message>
    <message>
        <source>Builds the current project</source>
        <comment>buildBuild</comment>
        <translation>Erstellt das aktuelle Projekt</translation>
    </message>
    <message>
        <source>Saves all files and builds what is out of date in the current configuration of the current project. Errors appear on the Build page of the output window.</source>
        <comment>buildBuild</comment>
        <translation>Speichert alle Dateien und erstellt, was in der aktuellen Konfiguration des aktuellen Projekts nicht auf dem neuesten Stand ist. Fehler stehen auf der Seite &quot;Erstellen&quot; des Ausgabefensters.</translation>
    </message>
    <message>
        <source>Rebuild</source>
        <comment>buildRebuild</comment>
        <translation>Neu erstellen</translation>
    </message>
    <message>
        <source>&amp;Rebuild</source>
        <comment>buildRebuild</comment>
        <translation>&amp;Neu erstellen</translation>
    </message>
    <message>
        <source>Builds the current project from scratch</source>
        <comment>buildRebuild</comment>
        <translation>Erstellt das aktuelle Projekt von Grund auf</translation>
    </message>
    <message>
        <source>Saves all files and builds everything in the current configuration of the current project, whether it is out of date or not.</source>
        <comment>buildRebuild</comment>
        <translation>Speichert alle Dateien und erstellt alles in der aktuellen Konfiguration des aktuellen Projekts, ob es auf dem neuesten Stand ist oder nicht.</translation>
    </message>
    <message>
        <source>Clean</source>
        <comment>buildClean</comment>
        <translation>Bereinigen</translation>
    </message>
    <message>
        <source>C&amp;lean</source>
        <comment>buildClean</comment>
        <translation>&amp;Bereinigen</translation>
    </message>
    <message>
        <source>Removes what builds of the current project have made</source>
        <comment>buildClean</comment>
        <translation>Entfernt, was Builds des aktuellen Projekts erzeugt haben</translation>
    </message>
    <message>
        <source>Saves all files and removes the files that builds of the current configuration of the current project have made.</source>
        <comment>buildClean</comment>
        <translation>Speichert alle Dateien und entfernt die Dateien, die Builds der aktuellen Konfiguration des aktuellen Projekts erzeugt haben.</translation>
    </message>
    <message>
        <source>Build Selected Project</source>
        <comment>buildBuildAlt</comment>
        <translation>Ausgewähltes Projekt erstellen</translation>
    </message>
    <message>
        <source>&amp;Build</source>
        <comment>buildBuildAlt</comment>
        <translation>Er&amp;stellen</translation>
    </message>
    <message>
        <source>Builds the selected project</source>
        <comment>buildBuildAlt</comment>
        <translation>Erstellt das ausgewählte Projekt</translation>
    </message>
    <message>
        <source>Saves all files and builds what is out of date in the project that is selected in the navigator.</source>
        <comment>buildBuildAlt</comment>
        <translation>Speichert alle Dateien und erstellt, was in dem Projekt, das im Navigator ausgewählt ist, nicht auf dem neuesten Stand ist.</translation>
    </message>
    <message>
        <source>Rebuild Selected Project</source>
        <comment>buildRebuildAlt</comment>
        <translation>Ausgewähltes Projekt neu erstellen</translation>
    </message>
    <message>
        <source>R&amp;ebuild</source>
        <comment>buildRebuildAlt</comment>
        <translation>&amp;Neu erstellen</translation>
    </message>
    <message>
        <source>Builds the selected project from scratch</source>
        <comment>buildRebuildAlt</comment>
        <translation>Erstellt das ausgewählte Projekt von Grund auf</translation>
    </message>
    <message>
        <source>Saves all files and builds everything in the project that is selected in the navigator.</source>
        <comment>buildRebuildAlt</comment>
        <translation>Speichert alle Dateien und erstellt alles in dem Projekt, das im Navigator ausgewählt ist.</translation>
    </message>
    <message>
        <source>Clean Selected Project</source>
        <comment>buildCleanAlt</comment>
        <translation>Ausgewähltes Projekt bereinigen</translation>
    </message>
    <message>
        <source>&amp;Clean</source>
        <comment>buildCleanAlt</comment>
        <translation>&amp;Bereinigen</translation>
    </message>
    <message>
        <source>Removes what builds of the selected project have made</source>
        <comment>buildCleanAlt</comment>
        <translation>Entfernt, was Builds des ausgewählten Projekts erzeugt haben</translation>
    </message>
    <message>
        <source>Saves all files and removes the files that builds of the project that is selected in the navigator have made.</source>
        <comment>buildCleanAlt</comment>
        <translation>Speichert alle Dateien und entfernt die Dateien, die Builds des im Navigator ausgewählten Projekts erzeugt haben.</translation>
    </message>
    <message>
        <source>Stop Build</source>
        <comment>buildStopBuild</comment>
        <translation>Build abbrechen</translation>
    </message>
    <message>
        <source>&amp;Stop Build</source>
        <comment>buildStopBuild</comment>
        <translation>Build &amp;abbrechen</translation>
    </message>
    <message>
        <source>Stops the running build</source>
        <comment>buildStopBuild</comment>
        <translation>Bricht den laufenden Build ab</translation>
    </message>
    <message>
        <source>Asks the build environment to stop the running build. Available while a build is running.</source>
        <comment>buildStopBuild</comment>
        <translation>Fordert die Build-Umgebung auf, den laufenden Build abzubrechen. Verfügbar, während ein Build läuft.</translation>
    </message>
    <message>
        <source>Batch Build</source>
        <comment>buildBatchBuild</comment>
        <translation>Stapelerstellung</translation>
    </message>
    <message>
        <source>Batc&amp;h Build...</source>
        <comment>buildBatchBuild</comment>
        <translation>&amp;Stapelerstellung...</translation>
    </message>
    <message>
        <source>Builds several configurations of the current project</source>
        <comment>buildBatchBuild</comment>
        <translation>Erstellt mehrere Konfigurationen des aktuellen Projekts</translation>
    </message>
    <message>
        <source>New Configuration</source>
        <comment>buildConfigurationsNew</comment>
        <translation>Neue Konfiguration</translation>
    </message>
    <message>
        <source>&amp;New Configuration...</source>
        <comment>buildConfigurationsNew</comment>
        <translation>&amp;Neue Konfiguration...</translation>
    </message>
    <message>
        <source>Adds a configuration to the current project</source>
        <comment>buildConfigurationsNew</comment>
        <translation>Fügt eine Konfiguration zum aktuellen Projekt hinzu</translation>
    </message>
    <message>
        <source>Adds a configuration to the current project. Available while nothing is being built or debugged.</source>
        <comment>buildConfigurationsNew</comment>
        <translation>Fügt eine Konfiguration zum aktuellen Projekt hinzu. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Edit Configurations</source>
        <comment>buildConfigurationsEdit</comment>
        <translation>Konfigurationen bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Edit Configurations...</source>
        <comment>buildConfigurationsEdit</comment>
        <translation>Konfigurationen &amp;bearbeiten...</translation>
    </message>
    <message>
        <source>Renames and removes configurations</source>
        <comment>buildConfigurationsEdit</comment>
        <translation>Benennt Konfigurationen um und entfernt sie</translation>
    </message>
    <message>
        <source>Renames and removes configurations of the current project. Changes take effect at once. Available while nothing is being built or debugged.</source>
        <comment>buildConfigurationsEdit</comment>
        <translation>Benennt Konfigurationen des aktuellen Projekts um und entfernt sie. Änderungen wirken sofort. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Run</source>
        <comment>debugRun</comment>
        <translation>Starten</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <comment>debugRun</comment>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>Starts or continues the program</source>
        <comment>debugRun</comment>
        <translation>Startet das Programm oder setzt es fort</translation>
    </message>
    <message>
        <source>Starts a debug session and the program on the target or, while it is paused, lets it go on. All files are saved first, and you are asked when the project needs a build. With several projects it acts on the current processor or on all.</source>
        <comment>debugRun</comment>
        <translation>Startet eine Debug-Sitzung und das Programm auf dem Zielsystem oder lässt es, während es angehalten ist, weiterlaufen. Zuerst werden alle Dateien gespeichert, und Sie werden gefragt, wenn das Projekt erstellt werden muss. Bei mehreren Projekten betrifft der Befehl den aktuellen Prozessor oder alle.</translation>
    </message>
    <message>
        <source>Attach</source>
        <comment>debugAttach</comment>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>&amp;Attach</source>
        <comment>debugAttach</comment>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>Connects to a program that already runs on the target</source>
        <comment>debugAttach</comment>
        <translation>Verbindet mit einem Programm, das auf dem Zielsystem schon läuft</translation>
    </message>
    <message>
        <source>Starts a debug session with the program that is already on the target, without loading it. Available when the execution environment can do so and no session is running.</source>
        <comment>debugAttach</comment>
        <translation>Startet eine Debug-Sitzung mit dem Programm, das schon auf dem Zielsystem ist, ohne es zu laden. Verfügbar, wenn die Ausführungsumgebung das kann und keine Sitzung läuft.</translation>
    </message>
    <message>
        <source>Run to Cursor</source>
        <comment>debugRunToCursor</comment>
        <translation>Bis zum Cursor laufen</translation>
    </message>
    <message>
        <source>Run to &amp;Cursor</source>
        <comment>debugRunToCursor</comment>
        <translation>Bis zum &amp;Cursor laufen</translation>
    </message>
    <message>
        <source>Runs the program up to the line of the cursor</source>
        <comment>debugRunToCursor</comment>
        <translation>Lässt das Programm bis zur Zeile des Cursors laufen</translation>
    </message>
    <message>
        <source>Lets the program of the current processor run up to the line of the cursor in the current text window. Starts a debug session when there is none.</source>
        <comment>debugRunToCursor</comment>
        <translation>Lässt das Programm des aktuellen Prozessors bis zur Zeile des Cursors im aktuellen Textfenster laufen. Startet eine Debug-Sitzung, wenn es keine gibt.</translation>
    </message>
    <message>
        <source>Step Over</source>
        <comment>debugStepOver</comment>
        <translation>Prozedurschritt</translation>
    </message>
    <message>
        <source>Step &amp;Over</source>
        <comment>debugStepOver</comment>
        <translation>P&amp;rozedurschritt</translation>
    </message>
    <message>
        <source>Executes the next line, calls included</source>
        <comment>debugStepOver</comment>
        <translation>Führt die nächste Zeile mitsamt Aufrufen aus</translation>
    </message>
    <message>
        <source>Executes the next line of the current processor, calls included. Starts a debug session when there is none.</source>
        <comment>debugStepOver</comment>
        <translation>Führt die nächste Zeile des aktuellen Prozessors mitsamt Aufrufen aus. Startet eine Debug-Sitzung, wenn es keine gibt.</translation>
    </message>
    <message>
        <source>Step Into</source>
        <comment>debugStepInto</comment>
        <translation>Einzelschritt</translation>
    </message>
    <message>
        <source>Step &amp;Into</source>
        <comment>debugStepInto</comment>
        <translation>&amp;Einzelschritt</translation>
    </message>
    <message>
        <source>Executes up to the next line, also inside a call</source>
        <comment>debugStepInto</comment>
        <translation>Läuft bis zur nächsten Zeile, auch in einen Aufruf hinein</translation>
    </message>
    <message>
        <source>Executes the current processor up to the next line, which may be inside a function that is called. Starts a debug session when there is none.</source>
        <comment>debugStepInto</comment>
        <translation>Führt den aktuellen Prozessor bis zur nächsten Zeile, die in einer aufgerufenen Funktion liegen kann. Startet eine Debug-Sitzung, wenn es keine gibt.</translation>
    </message>
    <message>
        <source>Pause</source>
        <comment>debugPause</comment>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <comment>debugPause</comment>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>Pauses the running program</source>
        <comment>debugPause</comment>
        <translation>Hält das laufende Programm an</translation>
    </message>
    <message>
        <source>Pauses the program on the current processor or on all. Available while it is running.</source>
        <comment>debugPause</comment>
        <translation>Hält das Programm auf dem aktuellen Prozessor oder auf allen an. Verfügbar, während es läuft.</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>debugStop</comment>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <comment>debugStop</comment>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Ends the debug session</source>
        <comment>debugStop</comment>
        <translation>Beendet die Debug-Sitzung</translation>
    </message>
    <message>
        <source>Ends the debug session on all processors. Available while the program is running, paused or finished.</source>
        <comment>debugStop</comment>
        <translation>Beendet die Debug-Sitzung auf allen Prozessoren. Verfügbar, während das Programm läuft, angehalten oder beendet ist.</translation>
    </message>
    <message>
        <source>Restart</source>
        <comment>debugRestart</comment>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>R&amp;estart</source>
        <comment>debugRestart</comment>
        <translation>&amp;Neu starten</translation>
    </message>
    <message>
        <source>Starts the program from its beginning</source>
        <comment>debugRestart</comment>
        <translation>Startet das Programm von Anfang an</translation>
    </message>
    <message>
        <source>Takes the program back to its beginning, on the current processor or on all, and pauses it there. Starts a debug session when there is none.</source>
        <comment>debugRestart</comment>
        <translation>Bringt das Programm an seinen Anfang zurück, auf dem aktuellen Prozessor oder auf allen, und hält es dort an. Startet eine Debug-Sitzung, wenn es keine gibt.</translation>
    </message>
    <message>
        <source>Wake Up</source>
        <comment>debugWakeup</comment>
        <translation>Aufwecken</translation>
    </message>
    <message>
        <source>&amp;Wake Up</source>
        <comment>debugWakeup</comment>
        <translation>Auf&amp;wecken</translation>
    </message>
    <message>
        <source>Wakes a sleeping processor</source>
        <comment>debugWakeup</comment>
        <translation>Weckt einen schlafenden Prozessor</translation>
    </message>
    <message>
        <source>Wakes the current processor, or all, from sleep. Available in a debug session while the program is running or paused.</source>
        <comment>debugWakeup</comment>
        <translation>Weckt den aktuellen Prozessor oder alle aus dem Schlaf. Verfügbar in einer Debug-Sitzung, während das Programm läuft oder angehalten ist.</translation>
    </message>
    <message>
        <source>Show Next Statement</source>
        <comment>debugShowNext</comment>
        <translation>Nächste Anweisung zeigen</translation>
    </message>
    <message>
        <source>Show &amp;Next Statement</source>
        <comment>debugShowNext</comment>
        <translation>Nächste Anweisung &amp;zeigen</translation>
    </message>
    <message>
        <source>Shows where the program is paused</source>
        <comment>debugShowNext</comment>
        <translation>Zeigt, wo das Programm angehalten ist</translation>
    </message>
    <message>
        <source>Shows the line that the current processor executes next, in its source file or in the disassembly. Available while the program is paused.</source>
        <comment>debugShowNext</comment>
        <translation>Zeigt die Zeile, die der aktuelle Prozessor als Nächstes ausführt, in ihrer Quelldatei oder im Disassembly. Verfügbar, während das Programm angehalten ist.</translation>
    </message>
    <message>
        <source>Breakpoints</source>
        <comment>debugBreakpoints</comment>
        <translation>Haltepunkte</translation>
    </message>
    <message>
        <source>&amp;Breakpoints...</source>
        <comment>debugBreakpoints</comment>
        <translation>&amp;Haltepunkte...</translation>
    </message>
    <message>
        <source>Lists and edits all breakpoints</source>
        <comment>debugBreakpoints</comment>
        <translation>Listet alle Haltepunkte auf und bearbeitet sie</translation>
    </message>
    <message>
        <source>Lists the breakpoints of all projects of the workspace, to add, change, disable and clear them.</source>
        <comment>debugBreakpoints</comment>
        <translation>Listet die Haltepunkte aller Projekte des Arbeitsbereichs auf, um sie hinzuzufügen, zu ändern, zu deaktivieren und zu löschen.</translation>
    </message>
    <message>
        <source>Toggle Breakpoint</source>
        <comment>debugToggleBreakpoint</comment>
        <translation>Haltepunkt umschalten</translation>
    </message>
    <message>
        <source>&amp;Toggle Breakpoint</source>
        <comment>debugToggleBreakpoint</comment>
        <translation>Haltepunkt &amp;umschalten</translation>
    </message>
    <message>
        <source>Sets, disables or clears a breakpoint at the cursor</source>
        <comment>debugToggleBreakpoint</comment>
        <translation>Setzt, deaktiviert oder löscht einen Haltepunkt am Cursor</translation>
    </message>
    <message>
        <source>Changes the breakpoint on the line of the cursor from none to enabled, to disabled and back to none. A click in the margin does the same. Not possible while the program is running.</source>
        <comment>debugToggleBreakpoint</comment>
        <translation>Ändert den Haltepunkt auf der Zeile des Cursors von keinem zu einem aktiven, zu einem deaktivierten und zurück zu keinem. Ein Klick in den Rand bewirkt dasselbe. Nicht möglich, während das Programm läuft.</translation>
    </message>
    <message>
        <source>View Disassembly</source>
        <comment>debugViewDisassembly</comment>
        <translation>Disassembly zeigen</translation>
    </message>
    <message>
        <source>View &amp;Disassembly</source>
        <comment>debugViewDisassembly</comment>
        <translation>&amp;Disassembly zeigen</translation>
    </message>
    <message>
        <source>Shows the program as machine instructions</source>
        <comment>debugViewDisassembly</comment>
        <translation>Zeigt das Programm als Maschinenbefehle</translation>
    </message>
    <message>
        <source>Shows the program memory of the current processor as machine instructions. Available when the execution environment of the project can disassemble.</source>
        <comment>debugViewDisassembly</comment>
        <translation>Zeigt den Programmspeicher des aktuellen Prozessors als Maschinenbefehle. Verfügbar, wenn die Ausführungsumgebung des Projekts disassemblieren kann.</translation>
    </message>
    <message>
        <source>Registers</source>
        <comment>debugToggleRegisterWindow</comment>
        <translation>Register</translation>
    </message>
    <message>
        <source>&amp;Registers</source>
        <comment>debugToggleRegisterWindow</comment>
        <translation>&amp;Register</translation>
    </message>
    <message>
        <source>Shows or hides the register window</source>
        <comment>debugToggleRegisterWindow</comment>
        <translation>Zeigt oder verbirgt das Registerfenster</translation>
    </message>
    <message>
        <source>Shows or hides the window with the registers of the processors.</source>
        <comment>debugToggleRegisterWindow</comment>
        <translation>Zeigt oder verbirgt das Fenster mit den Registern der Prozessoren.</translation>
    </message>
    <message>
        <source>Peripherals</source>
        <comment>debugTogglePeripheralWindow</comment>
        <translation>Peripherie</translation>
    </message>
    <message>
        <source>&amp;Peripherals</source>
        <comment>debugTogglePeripheralWindow</comment>
        <translation>&amp;Peripherie</translation>
    </message>
    <message>
        <source>Shows or hides the peripheral window</source>
        <comment>debugTogglePeripheralWindow</comment>
        <translation>Zeigt oder verbirgt das Peripheriefenster</translation>
    </message>
    <message>
        <source>Shows or hides the window with the registers of the on-chip peripherals. Shown only after a project was opened whose execution environment knows peripherals.</source>
        <comment>debugTogglePeripheralWindow</comment>
        <translation>Zeigt oder verbirgt das Fenster mit den Registern der Peripherie auf dem Chip. Wird erst gezeigt, nachdem ein Projekt geöffnet wurde, dessen Ausführungsumgebung die Peripherie kennt.</translation>
    </message>
    <message>
        <source>Watches</source>
        <comment>debugToggleWatchWindow</comment>
        <translation>Überwachung</translation>
    </message>
    <message>
        <source>&amp;Watches</source>
        <comment>debugToggleWatchWindow</comment>
        <translation>&amp;Überwachung</translation>
    </message>
    <message>
        <source>Shows or hides the watch window</source>
        <comment>debugToggleWatchWindow</comment>
        <translation>Zeigt oder verbirgt das Überwachungsfenster</translation>
    </message>
    <message>
        <source>Shows or hides the window with the expressions that you watch.</source>
        <comment>debugToggleWatchWindow</comment>
        <translation>Zeigt oder verbirgt das Fenster mit den Ausdrücken, die Sie überwachen.</translation>
    </message>
    <message>
        <source>Memory</source>
        <comment>debugToggleMemoryWindow</comment>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>&amp;Memory</source>
        <comment>debugToggleMemoryWindow</comment>
        <translation>&amp;Speicher</translation>
    </message>
    <message>
        <source>Shows or hides the memory window</source>
        <comment>debugToggleMemoryWindow</comment>
        <translation>Zeigt oder verbirgt das Speicherfenster</translation>
    </message>
    <message>
        <source>Shows or hides the window with the contents of the memory of the processors.</source>
        <comment>debugToggleMemoryWindow</comment>
        <translation>Zeigt oder verbirgt das Fenster mit dem Inhalt des Speichers der Prozessoren.</translation>
    </message>
    <message>
        <source>New Macro</source>
        <comment>toolsMacroNew</comment>
        <translation>Neues Makro</translation>
    </message>
    <message>
        <source>&amp;New Macro</source>
        <comment>toolsMacroNew</comment>
        <translation>&amp;Neues Makro</translation>
    </message>
    <message>
        <source>Adds a function to the file of your macros</source>
        <comment>toolsMacroNew</comment>
        <translation>Fügt der Datei Ihrer Makros eine Funktion hinzu</translation>
    </message>
    <message>
        <source>Opens the file macros.py in the editor and adds a function that does nothing yet, together with the line that puts it into the Macros menu. Write there what the macro does.</source>
        <comment>toolsMacroNew</comment>
        <translation>Öffnet die Datei macros.py im Editor und fügt eine Funktion hinzu, die noch nichts tut, und die Zeile, die sie in das Menü &quot;Makros&quot; aufnimmt. Schreiben Sie dort, was das Makro tut.</translation>
    </message>
    <message>
        <source>Edit Macros</source>
        <comment>toolsMacroEdit</comment>
        <translation>Makros bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Edit Macros</source>
        <comment>toolsMacroEdit</comment>
        <translation>Makros &amp;bearbeiten</translation>
    </message>
    <message>
        <source>Opens the file of your macros</source>
        <comment>toolsMacroEdit</comment>
        <translation>Öffnet die Datei Ihrer Makros</translation>
    </message>
    <message>
        <source>Opens the file macros.py in the editor. It is the place for macros of your own. Varnel does not load it by itself: let startup.py do so.</source>
        <comment>toolsMacroEdit</comment>
        <translation>Öffnet die Datei macros.py im Editor. Sie ist der Ort für Ihre eigenen Makros. Varnel lädt sie nicht von selbst: Lassen Sie startup.py das tun.</translation>
    </message>
    <message>
        <source>Customise</source>
        <comment>toolsCustomise</comment>
        <translation>Anpassen</translation>
    </message>
    <message>
        <source>&amp;Customise</source>
        <comment>toolsCustomise</comment>
        <translation>&amp;Anpassen</translation>
    </message>
    <message>
        <source>Changes the keys of the commands</source>
        <comment>toolsCustomise</comment>
        <translation>Ändert die Tasten der Befehle</translation>
    </message>
    <message>
        <source>Lists all commands with their keys, which you can change one by one or as a set. Menus and tool bars are declared in the file uiconfig.xml of the config folder.</source>
        <comment>toolsCustomise</comment>
        <translation>Listet alle Befehle mit ihren Tasten auf, die Sie einzeln oder als Satz ändern können. Menüs und Werkzeugleisten stehen in der Datei uiconfig.xml des Ordners config.</translation>
    </message>
    <message>
        <source>Options</source>
        <comment>toolsOptions</comment>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>&amp;Options...</source>
        <comment>toolsOptions</comment>
        <translation>&amp;Optionen...</translation>
    </message>
    <message>
        <source>Changes the settings of Varnel</source>
        <comment>toolsOptions</comment>
        <translation>Ändert die Einstellungen von Varnel</translation>
    </message>
    <message>
        <source>Changes the settings of the editor, its fonts and colours, the start-up, the external tools of this menu and the behaviour of the debugger.</source>
        <comment>toolsOptions</comment>
        <translation>Ändert die Einstellungen des Editors, seine Schriften und Farben, den Start, die eigenen Werkzeuge dieses Menüs und das Verhalten des Debuggers.</translation>
    </message>
    <message>
        <source>New Window</source>
        <comment>windowNew</comment>
        <translation>Neues Fenster</translation>
    </message>
    <message>
        <source>&amp;New Window</source>
        <comment>windowNew</comment>
        <translation>&amp;Neues Fenster</translation>
    </message>
    <message>
        <source>Opens a second window on the current file</source>
        <comment>windowNew</comment>
        <translation>Öffnet ein zweites Fenster auf die aktuelle Datei</translation>
    </message>
    <message>
        <source>Opens another window on the current file. Both show the same text, each at a place of its own.</source>
        <comment>windowNew</comment>
        <translation>Öffnet ein weiteres Fenster auf die aktuelle Datei. Beide zeigen denselben Text, jedes an einer eigenen Stelle.</translation>
    </message>
    <message>
        <source>Split</source>
        <comment>windowSplit</comment>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>&amp;Split</source>
        <comment>windowSplit</comment>
        <translation>&amp;Teilen</translation>
    </message>
    <message>
        <source>Splits the current text window</source>
        <comment>windowSplit</comment>
        <translation>Teilt das aktuelle Textfenster</translation>
    </message>
    <message>
        <source>Splits the current pane of a text window into two, one above the other, which show the same file.</source>
        <comment>windowSplit</comment>
        <translation>Teilt den aktuellen Bereich eines Textfensters in zwei übereinander, die dieselbe Datei zeigen.</translation>
    </message>
    <message>
        <source>Close Window</source>
        <comment>windowClose</comment>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <comment>windowClose</comment>
        <translation>Fenster s&amp;chließen</translation>
    </message>
    <message>
        <source>Closes the current window</source>
        <comment>windowClose</comment>
        <translation>Schließt das aktuelle Fenster</translation>
    </message>
    <message>
        <source>Closes the current window. The last window of a changed file asks first whether it is to be saved.</source>
        <comment>windowClose</comment>
        <translation>Schließt das aktuelle Fenster. Beim letzten Fenster einer geänderten Datei wird zuerst gefragt, ob sie gespeichert werden soll.</translation>
    </message>
    <message>
        <source>Close All Windows</source>
        <comment>windowCloseAll</comment>
        <translation>Alle Fenster schließen</translation>
    </message>
    <message>
        <source>Close &amp;All Windows</source>
        <comment>windowCloseAll</comment>
        <translation>&amp;Alle Fenster schließen</translation>
    </message>
    <message>
        <source>Closes all windows</source>
        <comment>windowCloseAll</comment>
        <translation>Schließt alle Fenster</translation>
    </message>
    <message>
        <source>Closes all windows, one after the other. The last window of a changed file asks first whether it is to be saved.</source>
        <comment>windowCloseAll</comment>
        <translation>Schließt alle Fenster nacheinander. Beim letzten Fenster einer geänderten Datei wird zuerst gefragt, ob sie gespeichert werden soll.</translation>
    </message>
    <message>
        <source>Cascade</source>
        <comment>windowCascade</comment>
        <translation>Überlappend</translation>
    </message>
    <message>
        <source>Casca&amp;de</source>
        <comment>windowCascade</comment>
        <translation>&amp;Überlappend</translation>
    </message>
    <message>
        <source>Arranges the windows one over the other</source>
        <comment>windowCascade</comment>
        <translation>Ordnet die Fenster überlappend an</translation>
    </message>
    <message>
        <source>Arranges all windows one over the other, each a little further to the right and down. Available in the style with free windows (MDI).</source>
        <comment>windowCascade</comment>
        <translation>Ordnet alle Fenster übereinander an, jedes etwas weiter rechts und unten. Verfügbar im Stil mit freien Fenstern (MDI).</translation>
    </message>
    <message>
        <source>Tile</source>
        <comment>windowTile</comment>
        <translation>Nebeneinander</translation>
    </message>
    <message>
        <source>&amp;Tile</source>
        <comment>windowTile</comment>
        <translation>N&amp;ebeneinander</translation>
    </message>
    <message>
        <source>Arranges the windows side by side</source>
        <comment>windowTile</comment>
        <translation>Ordnet die Fenster nebeneinander an</translation>
    </message>
    <message>
        <source>Arranges all windows so that none covers another. Available in the style with free windows (MDI).</source>
        <comment>windowTile</comment>
        <translation>Ordnet alle Fenster so an, dass keines ein anderes verdeckt. Verfügbar im Stil mit freien Fenstern (MDI).</translation>
    </message>
    <message>
        <source>Next Window</source>
        <comment>windowNext</comment>
        <translation>Nächstes Fenster</translation>
    </message>
    <message>
        <source>Ne&amp;xt Window</source>
        <comment>windowNext</comment>
        <translation>N&amp;ächstes Fenster</translation>
    </message>
    <message>
        <source>Goes to the next window</source>
        <comment>windowNext</comment>
        <translation>Geht zum nächsten Fenster</translation>
    </message>
    <message>
        <source>Makes the next window current, in the order of the list at the end of this menu; after the last comes the first.</source>
        <comment>windowNext</comment>
        <translation>Macht das nächste Fenster zum aktuellen, in der Reihenfolge der Liste am Ende dieses Menüs; nach dem letzten kommt das erste.</translation>
    </message>
    <message>
        <source>Previous Window</source>
        <comment>windowPrev</comment>
        <translation>Voriges Fenster</translation>
    </message>
    <message>
        <source>&amp;Previous Window</source>
        <comment>windowPrev</comment>
        <translation>&amp;Voriges Fenster</translation>
    </message>
    <message>
        <source>Goes to the previous window</source>
        <comment>windowPrev</comment>
        <translation>Geht zum vorigen Fenster</translation>
    </message>
    <message>
        <source>Makes the previous window current, in the order of the list at the end of this menu; before the first comes the last.</source>
        <comment>windowPrev</comment>
        <translation>Macht das vorige Fenster zum aktuellen, in der Reihenfolge der Liste am Ende dieses Menüs; vor dem ersten kommt das letzte.</translation>
    </message>
    <message>
        <source>Search Help</source>
        <comment>helpSearch</comment>
        <translation>Hilfe durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Search...</source>
        <comment>helpSearch</comment>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>Finds words in the help</source>
        <comment>helpSearch</comment>
        <translation>Sucht Wörter in der Hilfe</translation>
    </message>
    <message>
        <source>Finds the pages of the help that hold all words you enter. The signs * and ? stand for any letters and for one letter.</source>
        <comment>helpSearch</comment>
        <translation>Sucht die Seiten der Hilfe, die alle eingegebenen Wörter enthalten. Die Zeichen * und ? stehen für beliebige Buchstaben und für einen Buchstaben.</translation>
    </message>
    <message>
        <source>Help Home Page</source>
        <comment>helpHome</comment>
        <translation>Startseite der Hilfe</translation>
    </message>
    <message>
        <source>&amp;Home Page</source>
        <comment>helpHome</comment>
        <translation>S&amp;tartseite</translation>
    </message>
    <message>
        <source>Shows the first page of the help</source>
        <comment>helpHome</comment>
        <translation>Zeigt die erste Seite der Hilfe</translation>
    </message>
    <message>
        <source>Shows the first page of the help. Its contents are on the Help page of the navigator.</source>
        <comment>helpHome</comment>
        <translation>Zeigt die erste Seite der Hilfe. Ihr Inhaltsverzeichnis ist auf der Seite &quot;Hilfe&quot; des Navigators.</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>helpBack</comment>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <comment>helpBack</comment>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Goes back to the help page shown before</source>
        <comment>helpBack</comment>
        <translation>Geht zurück zur zuvor gezeigten Hilfeseite</translation>
    </message>
    <message>
        <source>Goes back to the page that the help window showed before. Available while the help window is current and there is such a page.</source>
        <comment>helpBack</comment>
        <translation>Geht zurück zu der Seite, die das Hilfefenster zuvor gezeigt hat. Verfügbar, während das Hilfefenster das aktuelle ist und es eine solche Seite gibt.</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>helpForward</comment>
        <translation>Vorwärts</translation>
    </message>
    <message>
        <source>&amp;Forward</source>
        <comment>helpForward</comment>
        <translation>Vor&amp;wärts</translation>
    </message>
    <message>
        <source>Goes forward to the help page left by Back</source>
        <comment>helpForward</comment>
        <translation>Geht vorwärts zu der mit &quot;Zurück&quot; verlassenen Hilfeseite</translation>
    </message>
    <message>
        <source>Goes forward to the page that was left by Back. Available while the help window is current and there is such a page.</source>
        <comment>helpForward</comment>
        <translation>Geht vorwärts zu der Seite, die mit &quot;Zurück&quot; verlassen wurde. Verfügbar, während das Hilfefenster das aktuelle ist und es eine solche Seite gibt.</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <comment>helpPrevious</comment>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>&amp;Previous Page</source>
        <comment>helpPrevious</comment>
        <translation>&amp;Vorige Seite</translation>
    </message>
    <message>
        <source>Goes to the previous page of the help</source>
        <comment>helpPrevious</comment>
        <translation>Geht zur vorigen Seite der Hilfe</translation>
    </message>
    <message>
        <source>Shows the page that stands before the current one in the contents of the help.</source>
        <comment>helpPrevious</comment>
        <translation>Zeigt die Seite, die im Inhaltsverzeichnis der Hilfe vor der aktuellen steht.</translation>
    </message>
    <message>
        <source>Next Page</source>
        <comment>helpNext</comment>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>&amp;Next Page</source>
        <comment>helpNext</comment>
        <translation>&amp;Nächste Seite</translation>
    </message>
    <message>
        <source>Goes to the next page of the help</source>
        <comment>helpNext</comment>
        <translation>Geht zur nächsten Seite der Hilfe</translation>
    </message>
    <message>
        <source>Shows the page that follows the current one in the contents of the help.</source>
        <comment>helpNext</comment>
        <translation>Zeigt die Seite, die im Inhaltsverzeichnis der Hilfe auf die aktuelle folgt.</translation>
    </message>
    <message>
        <source>About Varnel</source>
        <comment>helpAbout</comment>
        <translation>Über Varnel</translation>
    </message>
    <message>
        <source>&amp;About Varnel</source>
        <comment>helpAbout</comment>
        <translation>&amp;Über Varnel</translation>
    </message>
    <message>
        <source>Shows the version and the plug-ins</source>
        <comment>helpAbout</comment>
        <translation>Zeigt die Version und die Plug-ins</translation>
    </message>
    <message>
        <source>Shows the version of Varnel and the names of its plug-ins.</source>
        <comment>helpAbout</comment>
        <translation>Zeigt die Version von Varnel und die Namen seiner Plug-ins.</translation>
    </message>
    <message>
        <source>Report a Problem</source>
        <comment>helpReport</comment>
        <translation>Ein Problem melden</translation>
    </message>
    <message>
        <source>&amp;Report a Problem...</source>
        <comment>helpReport</comment>
        <translation>Ein &amp;Problem melden...</translation>
    </message>
    <message>
        <source>Collects what a report of a problem needs</source>
        <comment>helpReport</comment>
        <translation>Sammelt, was ein Problembericht braucht</translation>
    </message>
    <message>
        <source>Collects the versions of Varnel and its tools and the last warnings in a text that you complete and copy. Nothing is sent.</source>
        <comment>helpReport</comment>
        <translation>Sammelt die Versionen von Varnel und seinen Werkzeugen und die letzten Warnungen in einem Text, den Sie ergänzen und kopieren. Nichts wird gesendet.</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <comment>fileMenu</comment>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Recent &amp;Files</source>
        <comment>fileRecentFilesMenu</comment>
        <translation>Zuletzt geöffnete Date&amp;ien</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>editMenu</comment>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Indent and C&amp;omment</source>
        <comment>editLinesMenu</comment>
        <translation>Einrückung und K&amp;ommentar</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <comment>viewMenu</comment>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Toolbars</source>
        <comment>viewToolbarsMenu</comment>
        <translation>&amp;Werkzeugleisten</translation>
    </message>
    <message>
        <source>&amp;Project</source>
        <comment>projectMenu</comment>
        <translation>&amp;Projekt</translation>
    </message>
    <message>
        <source>&amp;Recent Workspaces</source>
        <comment>projectRecentWorkspacesMenu</comment>
        <translation>Zuletzt geöffnete A&amp;rbeitsbereiche</translation>
    </message>
    <message>
        <source>&amp;Build</source>
        <comment>buildMenu</comment>
        <translation>&amp;Erstellen</translation>
    </message>
    <message>
        <source>Co&amp;nfigurations</source>
        <comment>buildConfigurationsMenu</comment>
        <translation>&amp;Konfigurationen</translation>
    </message>
    <message>
        <source>&amp;Debug</source>
        <comment>debugMenu</comment>
        <translation>Deb&amp;uggen</translation>
    </message>
    <message>
        <source>Debu&amp;g Windows</source>
        <comment>debugWindowsMenu</comment>
        <translation>Debug-&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <comment>toolsMenu</comment>
        <translation>E&amp;xtras</translation>
    </message>
    <message>
        <source>&amp;Macros</source>
        <comment>toolMacroMenu</comment>
        <translation>&amp;Makros</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <comment>windowMenu</comment>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>helpMenu</comment>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>File</source>
        <comment>fileToolbar</comment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Edit</source>
        <comment>editToolbar</comment>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Build</source>
        <comment>buildToolbar</comment>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Debug</source>
        <comment>debugToolbar</comment>
        <translation>Debuggen</translation>
    </message>
    <message>
        <source>Macros</source>
        <comment>macroToolbar</comment>
        <translation>Makros</translation>
    </message>
    <message>
        <source>Builds, rebuilds or cleans those configurations of the current project that you tick. Available while nothing is being built or debugged, if the project has a build environment.</source>
        <comment>buildBatchBuild</comment>
        <translation>Erstellt die von Ihnen angekreuzten Konfigurationen des aktuellen Projekts, erstellt sie neu oder bereinigt sie. Verfügbar, während nichts erstellt oder debuggt wird, wenn das Projekt eine Build-Umgebung hat.</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <comment>helpPlugins</comment>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Plu&amp;g-ins...</source>
        <comment>helpPlugins</comment>
        <translation>Pl&amp;ug-ins...</translation>
    </message>
    <message>
        <source>Lists the plug-ins</source>
        <comment>helpPlugins</comment>
        <translation>Listet die Plug-ins auf</translation>
    </message>
    <message>
        <source>Lists the libraries of plug-ins with their features and problems. A plug-in can be switched off; it is not loaded when Varnel is started again.</source>
        <comment>helpPlugins</comment>
        <translation>Listet die Bibliotheken der Plug-ins mit ihren Fähigkeiten und Problemen auf. Ein Plug-in lässt sich abschalten; es wird beim nächsten Start von Varnel nicht mehr geladen.</translation>
    </message>
    <message>
        <source>Build All Projects</source>
        <comment>buildAllProjects</comment>
        <translation>Alle Projekte erstellen</translation>
    </message>
    <message>
        <source>Build &amp;All Projects</source>
        <comment>buildAllProjects</comment>
        <translation>Alle &amp;Projekte erstellen</translation>
    </message>
    <message>
        <source>Builds all projects of the workspace</source>
        <comment>buildAllProjects</comment>
        <translation>Erstellt alle Projekte des Arbeitsbereichs</translation>
    </message>
    <message>
        <source>Saves all files and builds what is out of date in all projects of the workspace, one after the other, each in its current configuration. A failure does not keep the others from being built.</source>
        <comment>buildAllProjects</comment>
        <translation>Speichert alle Dateien und erstellt nacheinander in allen Projekten des Arbeitsbereichs, was nicht auf dem neuesten Stand ist, jedes in seiner aktuellen Konfiguration. Auch wenn eines fehlschlägt, werden die anderen erstellt.</translation>
    </message>
    <message>
        <source>Set Next Statement</source>
        <comment>debugSetNext</comment>
        <translation>Nächste Anweisung setzen</translation>
    </message>
    <message>
        <source>Set Ne&amp;xt Statement</source>
        <comment>debugSetNext</comment>
        <translation>Nächs&amp;te Anweisung setzen</translation>
    </message>
    <message>
        <source>Moves the paused program to the line of the cursor</source>
        <comment>debugSetNext</comment>
        <translation>Setzt das angehaltene Programm auf die Zeile des Cursors</translation>
    </message>
    <message>
        <source>Makes the line of the cursor the one that the current processor executes next. Nothing between is executed. Available while the program is paused.</source>
        <comment>debugSetNext</comment>
        <translation>Macht die Zeile des Cursors zu der, die der aktuelle Prozessor als Nächstes ausführt. Nichts dazwischen wird ausgeführt. Verfügbar, während das Programm angehalten ist.</translation>
    </message>
    <message>
        <source>Record Script</source>
        <comment>toolsRecordScript</comment>
        <translation>Skript aufzeichnen</translation>
    </message>
    <message>
        <source>&amp;Record Script</source>
        <comment>toolsRecordScript</comment>
        <translation>&amp;Skript aufzeichnen</translation>
    </message>
    <message>
        <source>Records what you do as a Python function</source>
        <comment>toolsRecordScript</comment>
        <translation>Zeichnet auf, was Sie tun, als Python-Funktion</translation>
    </message>
    <message>
        <source>Records commands, opened files, breakpoints and watches. Choose it again to stop: the editor shows a Python function that does the same.</source>
        <comment>toolsRecordScript</comment>
        <translation>Zeichnet Befehle, geöffnete Dateien, Haltepunkte und Überwachungen auf. Wählen Sie den Befehl noch einmal, um aufzuhören: Der Editor zeigt eine Python-Funktion, die dasselbe tut.</translation>
    </message>
    <message>
        <source>Writes the current file to disk. When another program has changed the file there, you are asked before it is overwritten. Available while the file has changes.</source>
        <comment>fileSave</comment>
        <translation>Schreibt die aktuelle Datei auf den Datenträger. Wenn ein anderes Programm die Datei dort geändert hat, werden Sie gefragt, bevor sie überschrieben wird. Verfügbar, solange die Datei Änderungen hat.</translation>
    </message>
    <message>
        <source>Copies the selected text of the current window, of a page of the output window or of the Python command line to the clipboard. Available while text is selected.</source>
        <comment>editCopy</comment>
        <translation>Kopiert den ausgewählten Text des aktuellen Fensters, einer Seite des Ausgabefensters oder der Python-Befehlszeile in die Zwischenablage. Verfügbar, solange Text ausgewählt ist.</translation>
    </message>
    <message>
        <source>Deletes the selected text. In the navigator it takes the selected files and folders out of their project, and asks before it removes several of them or a folder with contents; nothing is deleted on disk.</source>
        <comment>editRemove</comment>
        <translation>Löscht den ausgewählten Text. Im Navigator nimmt der Befehl die ausgewählten Dateien und Ordner aus ihrem Projekt und fragt vorher, wenn es mehrere sind oder ein Ordner mit Inhalt; auf dem Datenträger wird nichts gelöscht.</translation>
    </message>
    <message>
        <source>Show in Navigator</source>
        <comment>viewShowInNavigator</comment>
        <translation>Im Navigator zeigen</translation>
    </message>
    <message>
        <source>&amp;Show in Navigator</source>
        <comment>viewShowInNavigator</comment>
        <translation>&amp;Im Navigator zeigen</translation>
    </message>
    <message>
        <source>Selects the current file in the navigator</source>
        <comment>viewShowInNavigator</comment>
        <translation>Wählt die aktuelle Datei im Navigator aus</translation>
    </message>
    <message>
        <source>Selects the file of the current window on the Files page of the navigator, which is shown if it was hidden.</source>
        <comment>viewShowInNavigator</comment>
        <translation>Wählt die Datei des aktuellen Fensters auf der Seite Dateien des Navigators aus; ist er verborgen, wird er gezeigt.</translation>
    </message>
    <message>
        <source>Close Pane</source>
        <comment>windowClosePane</comment>
        <translation>Bereich schließen</translation>
    </message>
    <message>
        <source>Close Pan&amp;e</source>
        <comment>windowClosePane</comment>
        <translation>&amp;Bereich schließen</translation>
    </message>
    <message>
        <source>Closes the current part of a split window</source>
        <comment>windowClosePane</comment>
        <translation>Schließt den aktuellen Bereich eines geteilten Fensters</translation>
    </message>
    <message>
        <source>Closes the current part of a text window that was split. The file stays open. Available while the window has more than one part.</source>
        <comment>windowClosePane</comment>
        <translation>Schließt den aktuellen Bereich eines geteilten Textfensters. Die Datei bleibt offen. Verfügbar, solange das Fenster mehr als einen Bereich hat.</translation>
    </message>
    <message>
        <source>Prints what the current window shows, with a number on each page. Large files and disassemblies cannot be printed.</source>
        <comment>filePrint</comment>
        <translation>Druckt, was das aktuelle Fenster zeigt, mit einer Nummer auf jeder Seite. Große Dateien und Disassemblys lassen sich nicht drucken.</translation>
    </message>
    <message>
        <source>Writes a Makefile that builds the current project</source>
        <comment>projectGenerateMakefile</comment>
        <translation>Schreibt ein Makefile, das das aktuelle Projekt erstellt</translation>
    </message>
    <message>
        <source>Writes a Makefile with which GNU make builds all configurations of the current project without Varnel, and Makefiles of the library projects that it uses. Asks before it overwrites a file that it has not written itself. Available while nothing is being built or debugged.</source>
        <comment>projectGenerateMakefile</comment>
        <translation>Schreibt ein Makefile, mit dem GNU make alle Konfigurationen des aktuellen Projekts ohne Varnel erstellt, und Makefiles der Bibliotheksprojekte, die es benutzt. Fragt, bevor eine Datei überschrieben wird, die nicht so entstanden ist. Verfügbar, während nichts erstellt oder debuggt wird.</translation>
    </message>
    <message>
        <source>Encoding and Line Ends</source>
        <comment>viewFileFormat</comment>
        <translation>Kodierung und Zeilenenden</translation>
    </message>
    <message>
        <source>&amp;Encoding and Line Ends</source>
        <comment>viewFileFormat</comment>
        <translation>&amp;Kodierung und Zeilenenden</translation>
    </message>
    <message>
        <source>Changes how the current file is written</source>
        <comment>viewFileFormat</comment>
        <translation>Ändert, wie die aktuelle Datei geschrieben wird</translation>
    </message>
    <message>
        <source>Opens the menu in the status bar with the encodings and line ends in which the current file can be saved.</source>
        <comment>viewFileFormat</comment>
        <translation>Öffnet das Menü in der Statusleiste mit den Kodierungen und Zeilenenden, in denen die aktuelle Datei gespeichert werden kann.</translation>
    </message>
    <message>
        <source>Show Value</source>
        <comment>debugShowValue</comment>
        <translation>Wert anzeigen</translation>
    </message>
    <message>
        <source>Show &amp;Value</source>
        <comment>debugShowValue</comment>
        <translation>Wert anzei&amp;gen</translation>
    </message>
    <message>
        <source>Shows the value of the expression at the cursor</source>
        <comment>debugShowValue</comment>
        <translation>Zeigt den Wert des Ausdrucks am Cursor</translation>
    </message>
    <message>
        <source>Shows the value of the selected text, or of the expression at the cursor, as pointing at it does. Available while the program is paused.</source>
        <comment>debugShowValue</comment>
        <translation>Zeigt den Wert des markierten Textes oder des Ausdrucks am Cursor, wie wenn man darauf zeigt. Verfügbar, während das Programm angehalten ist.</translation>
    </message>
</context>
<context>
    <name>ValueToolTips</name>
    <message>
        <source>There is no expression at the cursor.</source>
        <translation>Am Cursor steht kein Ausdruck.</translation>
    </message>
    <message>
        <source>The value is not known.</source>
        <translation>Der Wert ist nicht bekannt.</translation>
    </message>
</context>
<context>
    <name>VariableList</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
</context>
<context>
    <name>Variables</name>
    <message>
        <source>The program is not paused.</source>
        <translation>Das Programm ist nicht angehalten.</translation>
    </message>
    <message>
        <source>The expression could change the program.</source>
        <translation>Der Ausdruck könnte das Programm verändern.</translation>
    </message>
    <message>
        <source>These variables cannot be listed.</source>
        <translation>Diese Variablen können nicht aufgelistet werden.</translation>
    </message>
    <message>
        <source>Variables are shown for the task that runs.</source>
        <translation>Variablen werden für den laufenden Task angezeigt.</translation>
    </message>
</context>
<context>
    <name>VariablesPane</name>
    <message>
        <source>Natural</source>
        <translation>Natürlich</translation>
    </message>
    <message>
        <source>Decimal</source>
        <translation>Dezimal</translation>
    </message>
    <message>
        <source>Unsigned decimal</source>
        <translation>Dezimal ohne Vorzeichen</translation>
    </message>
    <message>
        <source>Hexadecimal</source>
        <translation>Hexadezimal</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>Binär</translation>
    </message>
    <message>
        <source>Octal</source>
        <translation>Oktal</translation>
    </message>
    <message>
        <source>Character</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>Floating point</source>
        <translation>Gleitkomma</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>Kind of variables</source>
        <translation>Art der Variablen</translation>
    </message>
    <message>
        <source>Variables of the function</source>
        <translation>Variablen der Funktion</translation>
    </message>
    <message>
        <source>Variables of the file</source>
        <translation>Variablen der Datei</translation>
    </message>
    <message>
        <source>Global variables</source>
        <translation>Globale Variablen</translation>
    </message>
    <message>
        <source>The debugger of this project does not offer variables.</source>
        <translation>Der Debugger dieses Projekts bietet keine Variablen.</translation>
    </message>
    <message>
        <source>There is no program to be debugged.</source>
        <translation>Es gibt kein Programm, das sich debuggen lässt.</translation>
    </message>
    <message>
        <source>Edit Value</source>
        <translation>Wert bearbeiten</translation>
    </message>
    <message>
        <source>Copy Value</source>
        <translation>Wert kopieren</translation>
    </message>
    <message>
        <source>Format of All Values</source>
        <translation>Format aller Werte</translation>
    </message>
    <message>
        <source>Format of the Value</source>
        <translation>Format des Werts</translation>
    </message>
    <message>
        <source>There are no variables.</source>
        <translation>Es gibt keine Variablen.</translation>
    </message>
    <message>
        <source>The value cannot be changed: %1</source>
        <translation>Der Wert kann nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>… %1 more</source>
        <translation>… %1 weitere</translation>
    </message>
    <message>
        <source>… more</source>
        <translation>… weitere</translation>
    </message>
</context>
<context>
    <name>View</name>
    <message>
        <source>%1 has changed.

Do you want to save the changes?</source>
        <translation>%1 wurde geändert.

Möchten Sie die Änderungen speichern?</translation>
    </message>
    <message>
        <source> (deleted)</source>
        <translation> (gelöscht)</translation>
    </message>
    <message>
        <source>%1 was deleted outside of the editor.

Do you want to save the text again?</source>
        <translation>%1 wurde außerhalb des Editors gelöscht.

Möchten Sie den Text wieder speichern?</translation>
    </message>
</context>
<context>
    <name>WatchListView</name>
    <message>
        <source>Watch</source>
        <translation>Ausdruck</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>WatchMembers</name>
    <message>
        <source>Show more</source>
        <translation>Mehr zeigen</translation>
    </message>
</context>
<context>
    <name>WatchWindow</name>
    <message>
        <source>Watches</source>
        <translation>Überwachung</translation>
    </message>
    <message>
        <source>Remove Watch</source>
        <translation>Ausdruck entfernen</translation>
    </message>
    <message>
        <source>Click to add new</source>
        <translation>Hier klicken für neuen Ausdruck</translation>
    </message>
    <message>
        <source>????</source>
        <translation>????</translation>
    </message>
    <message>
        <source>The value cannot be changed: %1</source>
        <translation>Der Wert kann nicht geändert werden: %1</translation>
    </message>
</context>
<context>
    <name>Workspace</name>
    <message>
        <source>The following file could not be opened:
%1</source>
        <translation>Die folgende Datei konnte nicht geöffnet werden:
%1</translation>
    </message>
    <message>
        <source>The following file does not exist:
%1

The text stays open as it is.</source>
        <translation>Die folgende Datei gibt es nicht:
%1

Der Text bleibt offen, wie er ist.</translation>
    </message>
</context>
<context>
    <name>ZoomCommands</name>
    <message>
        <source>Zoom &amp;In</source>
        <translation>&amp;Vergrößern</translation>
    </message>
    <message>
        <source>Zoom O&amp;ut</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Zoom &amp;100 %</source>
        <translation>&amp;100 %</translation>
    </message>
    <message>
        <source>Zoom: %1 %</source>
        <translation>Zoom: %1 %</translation>
    </message>
</context>
<context>
    <name>deviceDialog</name>
    <message>
        <source>Your Own Arm Device</source>
        <translation>Ihr eigener Arm-Chip</translation>
    </message>
    <message>
        <source>&amp;Core:</source>
        <translation>&amp;Kern:</translation>
    </message>
    <message>
        <source>Cortex-M4 with FPU</source>
        <translation>Cortex-M4 mit FPU</translation>
    </message>
    <message>
        <source>Cortex-M7 with FPU</source>
        <translation>Cortex-M7 mit FPU</translation>
    </message>
    <message>
        <source>Cortex-M33 with FPU</source>
        <translation>Cortex-M33 mit FPU</translation>
    </message>
    <message>
        <source>&amp;Flash starts at:</source>
        <translation>&amp;Flash beginnt bei:</translation>
    </message>
    <message>
        <source>Si&amp;ze of the flash:</source>
        <translation>&amp;Größe des Flash:</translation>
    </message>
    <message>
        <source>&amp;RAM starts at:</source>
        <translation>&amp;RAM beginnt bei:</translation>
    </message>
    <message>
        <source>S&amp;ize of the RAM:</source>
        <translation>Größe &amp;des RAM:</translation>
    </message>
    <message>
        <source>&amp;SVD file:</source>
        <translation>&amp;SVD-Datei:</translation>
    </message>
    <message>
        <source>none: without names of interrupts and registers</source>
        <translation>keine: ohne Namen von Interrupts und Registern</translation>
    </message>
    <message>
        <source>Choose the SVD File</source>
        <translation>SVD-Datei wählen</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>&amp;Probe:</source>
        <translation>Debug-&amp;Adapter:</translation>
    </message>
    <message>
        <source>A debug server at 127.0.0.1:3333</source>
        <translation>Ein Debug-Server bei 127.0.0.1:3333</translation>
    </message>
    <message>
        <source>No probe: emulation by QEMU</source>
        <translation>Kein Adapter: Emulation durch QEMU</translation>
    </message>
    <message>
        <source>C&amp;hip file of OpenOCD:</source>
        <translation>C&amp;hip-Datei von OpenOCD:</translation>
    </message>
    <message>
        <source>such as target/chip.cfg; empty for any Cortex-M</source>
        <translation>etwa target/chip.cfg; leer für jeden Cortex-M</translation>
    </message>
</context>
<context>
    <name>fromFolderDialog</name>
    <message>
        <source>From an Existing Folder</source>
        <translation>Aus einem vorhandenen Ordner</translation>
    </message>
    <message>
        <source>&amp;Folder with the sources:</source>
        <translation>Ordner mit den &amp;Quellen:</translation>
    </message>
    <message>
        <source>Please enter the folder with the sources.</source>
        <translation>Bitte geben Sie den Ordner mit den Quellen ein.</translation>
    </message>
    <message>
        <source>Choose a File in the Folder</source>
        <translation>Datei im Ordner wählen</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>&amp;Run make or CMake to read their files</source>
        <translation>&amp;make oder CMake ausführen, um ihre Dateien zu lesen</translation>
    </message>
    <message>
        <source>A Makefile or CMakeLists.txt can run any program when it is read, so clear this for a folder that you do not trust. Nothing is built, and a compile_commands.json is read in any case.</source>
        <translation>Ein Makefile oder CMakeLists.txt kann beim Lesen jedes Programm ausführen. Entfernen Sie deshalb das Häkchen bei einem Ordner, dem Sie nicht vertrauen. Es wird nichts erstellt, und eine compile_commands.json wird immer gelesen.</translation>
    </message>
</context>
<context>
    <name>targetDialog</name>
    <message>
        <source>From an Existing Folder</source>
        <translation>Aus einem vorhandenen Ordner</translation>
    </message>
    <message>
        <source>&amp;What shall the project build?</source>
        <translation>&amp;Was soll das Projekt erstellen?</translation>
    </message>
</context>
</TS>
