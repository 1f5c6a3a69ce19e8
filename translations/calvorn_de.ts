<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AmplitudeLadder</name>
    <message>
        <source>(Vref %1V)</source>
        <translation>(Vref %1V)</translation>
    </message>
</context>
<context>
    <name>BoundedFile</name>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>it is larger than %1 MB</source>
        <translation>sie ist größer als %1 MB</translation>
    </message>
    <message>
        <source>it changed while being read</source>
        <translation>sie hat sich beim Lesen geändert</translation>
    </message>
</context>
<context>
    <name>ChipLimits</name>
    <message>
        <source>The system clock must be at least %1 Hz.</source>
        <translation>Der Systemtakt muss mindestens %1 Hz betragen.</translation>
    </message>
    <message>
        <source>The %1 cannot multiply its clock by %2.</source>
        <translation>Der %1 kann seinen Takt nicht mit %2 multiplizieren.</translation>
    </message>
    <message>
        <source>Above %1 Hz the output is weak or impure.</source>
        <translation>Über %1 Hz ist das Signal schwach oder unsauber.</translation>
    </message>
    <message>
        <source>Clock and maximum frequency are within the limits of the %1.</source>
        <translation>Takt und Maximalfrequenz liegen in den Grenzen des %1.</translation>
    </message>
    <message>
        <source>The system clock of the %1 must not exceed %2 Hz.</source>
        <translation>Der Systemtakt des %1 darf %2 Hz nicht überschreiten.</translation>
    </message>
    <message>
        <source>With the multiplier, the reference clock of the %1 must not exceed %2 Hz.</source>
        <translation>Mit dem Multiplikator darf der Referenztakt des %1 %2 Hz nicht überschreiten.</translation>
    </message>
    <message>
        <source>The maximum frequency is above half the system clock: the generator would output its image.</source>
        <translation>Die Maximalfrequenz liegt über dem halben Systemtakt: Der Generator würde ihre Spiegelfrequenz erzeugen.</translation>
    </message>
</context>
<context>
    <name>CsvFields</name>
    <message>
        <source>a field is too long</source>
        <translation>ein Feld ist zu lang</translation>
    </message>
    <message>
        <source>the file ends unexpectedly</source>
        <translation>die Datei endet unerwartet</translation>
    </message>
</context>
<context>
    <name>ErrorBoundary</name>
    <message>
        <source>(in %1)</source>
        <translation>(in %1)</translation>
    </message>
</context>
<context>
    <name>FileReplacement</name>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
</context>
<context>
    <name>Frequency</name>
    <message>
        <source>The reference clock of the generator must be at least 1 Hz.</source>
        <translation>Der Referenztakt des Generators muss mindestens 1 Hz betragen.</translation>
    </message>
    <message>
        <source>The frequency %1 Hz cannot be generated with a system clock of %2 Hz.</source>
        <translation>Die Frequenz %1 Hz lässt sich mit einem Systemtakt von %2 Hz nicht erzeugen.</translation>
    </message>
    <message>
        <source>The sweep up to %1 Hz cannot be generated with a system clock of %2 Hz.</source>
        <translation>Das Wobbeln bis %1 Hz ist mit einem Systemtakt von %2 Hz nicht möglich.</translation>
    </message>
    <message>
        <source>the AD9850 has no multiplier; the value must be 1</source>
        <translation>der AD9850 hat keinen Multiplikator; der Wert muss 1 sein</translation>
    </message>
    <message>
        <source>for an AD9851, the value must be 1 or 6</source>
        <translation>beim AD9851 muss der Wert 1 oder 6 sein</translation>
    </message>
    <message>
        <source>for an AD9951, the value must be 1 or 4 to 20</source>
        <translation>beim AD9951 muss der Wert 1 oder 4 bis 20 sein</translation>
    </message>
    <message>
        <source>%1 Hz is above half the generator&apos;s clock: the output is its image.</source>
        <translation>%1 Hz liegt über dem halben Takt des Generators: Am Ausgang erscheint die Spiegelfrequenz.</translation>
    </message>
    <message>
        <source>%1 Hz is above the generator&apos;s useful maximum of %2 Hz.</source>
        <translation>%1 Hz liegt über dem nutzbaren Höchstwert des Generators von %2 Hz.</translation>
    </message>
</context>
<context>
    <name>FrequencyPlan</name>
    <message>
        <source>Start frequency will be set to </source>
        <translation>Die Startfrequenz wird gesetzt auf </translation>
    </message>
    <message>
        <source>Stop frequency will be set to </source>
        <translation>Die Stoppfrequenz wird gesetzt auf </translation>
    </message>
</context>
<context>
    <name>FrequencyTicks</name>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>%1 kHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
</context>
<context>
    <name>InterfaceKind</name>
    <message>
        <source>PIC connected to the USB port COM%1</source>
        <translation>PIC am USB-Port COM%1</translation>
    </message>
    <message>
        <source>(Project by Brenik)</source>
        <translation>(Projekt von Brenik)</translation>
    </message>
    <message>
        <source>DDS Generator/Detector connected to the parallel port LPT 0%1</source>
        <translation>DDS-Generator/Detektor am Parallelport LPT 0%1</translation>
    </message>
    <message>
        <source>In the manual (F1): &quot;The parallel-port board&quot;</source>
        <translation>Im Handbuch (F1): &quot;The parallel-port board&quot;</translation>
    </message>
    <message>
        <source>MiniVNA connected to the USB port COM%1</source>
        <translation>MiniVNA am USB-Port COM%1</translation>
    </message>
    <message>
        <source>In the manual (F1): &quot;The MiniVNA&quot;</source>
        <translation>Im Handbuch (F1): &quot;The MiniVNA&quot;</translation>
    </message>
    <message>
        <source>by PIC 16F877, step: </source>
        <translation> im PIC 16F877, Schritt: </translation>
    </message>
    <message>
        <source>, step: </source>
        <translation>, Schritt: </translation>
    </message>
    <message>
        <source>parallel port %1</source>
        <translation>Parallelport %1</translation>
    </message>
    <message>
        <source>serial port COM%1</source>
        <translation>serieller Port COM%1</translation>
    </message>
    <message>
        <source>Board design: built by radio amateurs</source>
        <translation>Entwurf der Platine: Eigenbau von Funkamateuren</translation>
    </message>
    <message>
        <source>Analyser design: thanks to its developers</source>
        <translation>Entwurf des Analysators: mit Dank an seine Entwickler</translation>
    </message>
</context>
<context>
    <name>LimitLines</name>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number with a decimal point</source>
        <translation>&quot;%1&quot; ist keine Zahl mit Dezimalpunkt</translation>
    </message>
    <message>
        <source>three fields are needed: frequency, upper, lower</source>
        <translation>drei Felder sind nötig: Frequenz, obere, untere Grenze</translation>
    </message>
    <message>
        <source>there are more than %1 points</source>
        <translation>es sind mehr als %1 Punkte</translation>
    </message>
    <message>
        <source>the frequency is negative</source>
        <translation>die Frequenz ist negativ</translation>
    </message>
    <message>
        <source>the first line must be &quot;%1&quot;, or the same with V or &quot;dB relative&quot; instead of dB</source>
        <translation>die erste Zeile muss &quot;%1&quot; lauten, oder mit V oder &quot;dB relative&quot; statt dB</translation>
    </message>
    <message>
        <source>the file is too large for a limit file</source>
        <translation>die Datei ist zu groß für eine Grenzwertdatei</translation>
    </message>
</context>
<context>
    <name>LptWiring</name>
    <message>
        <source>this line must be connected.</source>
        <translation>diese Leitung muss angeschlossen sein.</translation>
    </message>
    <message>
        <source>there is no pin &quot;%1&quot;.</source>
        <translation>es gibt keinen Pin „%1“.</translation>
    </message>
    <message>
        <source>%1 is an input of the port.</source>
        <translation>%1 ist ein Eingang des Ports.</translation>
    </message>
    <message>
        <source>%1 is an output of the port.</source>
        <translation>%1 ist ein Ausgang des Ports.</translation>
    </message>
    <message>
        <source>unknown line.</source>
        <translation>unbekannte Leitung.</translation>
    </message>
    <message>
        <source>D0 to D7 are used for the generator&apos;s bytes.</source>
        <translation>D0 bis D7 werden für die Bytes des Generators gebraucht.</translation>
    </message>
    <message>
        <source>the pin is already used by %1.</source>
        <translation>der Pin wird bereits von %1 benutzt.</translation>
    </message>
    <message>
        <source>must be &quot;serial&quot; or &quot;byte&quot;, not &quot;%1&quot;.</source>
        <translation>muss „serial“ oder „byte“ sein, nicht „%1“.</translation>
    </message>
</context>
<context>
    <name>ParallelPort</name>
    <message>
        <source>The parallel port is not open.</source>
        <translation>Der Parallelport ist nicht geöffnet.</translation>
    </message>
    <message>
        <source> A USB printer cable is not a parallel port.</source>
        <translation> Ein USB-Druckerkabel ist kein Parallelport.</translation>
    </message>
    <message>
        <source>This computer has: %1.</source>
        <translation>Dieser Rechner hat: %1.</translation>
    </message>
    <message>
        <source>There is no parallel port at the address %1. %2%3</source>
        <translation>An der Adresse %1 gibt es keinen Parallelport. %2%3</translation>
    </message>
    <message>
        <source>%1 is not a parallel port: %2.</source>
        <translation>%1 ist kein Parallelport: %2.</translation>
    </message>
    <message>
        <source>The parallel port %1 refused an access: %2.</source>
        <translation>Der Parallelport %1 hat einen Zugriff abgelehnt: %2.</translation>
    </message>
    <message>
        <source>%1 cannot be opened: %2.</source>
        <translation>%1 lässt sich nicht öffnen: %2.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>%1 lässt sich nicht benutzen: %2.</translation>
    </message>
    <message>
        <source>%1 is in use by another program.</source>
        <translation>%1 wird von einem anderen Programm benutzt.</translation>
    </message>
    <message>
        <source>The simulated parallel port is set to refuse.</source>
        <translation>Der simulierte Parallelport ist auf Ablehnen eingestellt.</translation>
    </message>
    <message>
        <source>The parallel port has disappeared.</source>
        <translation>Der Parallelport ist verschwunden.</translation>
    </message>
    <message>
        <source>The driver has found none in this computer.</source>
        <translation>Der Treiber hat in diesem Rechner keinen gefunden.</translation>
    </message>
    <message>
        <source>No parallel-port driver is loaded: an administrator must run &quot;modprobe -a parport_pc ppdev&quot;.%1</source>
        <translation>Kein Treiber für Parallelports ist geladen: Ein Administrator muss „modprobe -a parport_pc ppdev“ ausführen.%1</translation>
    </message>
    <message>
        <source>The parallel port %1 has disappeared.</source>
        <translation>Der Parallelport %1 ist verschwunden.</translation>
    </message>
    <message>
        <source>The parallel port %1 does not support setting its lines individually.</source>
        <translation>Beim Parallelport %1 lassen sich die Leitungen nicht einzeln setzen.</translation>
    </message>
    <message>
        <source>The data lines of %1 cannot be used as outputs: %2.</source>
        <translation>Die Datenleitungen von %1 lassen sich nicht als Ausgänge schalten: %2.</translation>
    </message>
    <message>
        <source>%1 does not exist: an administrator must run &quot;modprobe ppdev&quot;.</source>
        <translation>%1 existiert nicht: Ein Administrator muss „modprobe ppdev“ ausführen.</translation>
    </message>
    <message>
        <source>You have no permission to use %1: an administrator must add you to the group &quot;lp&quot;; then log in again.</source>
        <translation>Sie haben keine Berechtigung für %1: Ein Administrator muss Sie in die Gruppe „lp“ aufnehmen, dann melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>%1 is in use by the printer driver (lp): stop the printer service, or ask an administrator to run &quot;rmmod lp&quot;.</source>
        <translation>%1 wird vom Druckertreiber (lp) benutzt: Druckdienst anhalten, oder ein Administrator muss „rmmod lp“ ausführen.</translation>
    </message>
</context>
<context>
    <name>PicBoard</name>
    <message>
        <source>The board has an %1 with a clock of %2 Hz; the settings specify %3, %4 Hz.</source>
        <translation>Auf der Platine ist ein %1 mit einem Takt von %2 Hz; eingestellt sind %3, %4 Hz.</translation>
    </message>
</context>
<context>
    <name>PinUses</name>
    <message>
        <source>DDS clock</source>
        <translation>DDS-Takt</translation>
    </message>
    <message>
        <source>DDS update</source>
        <translation>DDS-Update</translation>
    </message>
    <message>
        <source>DDS data</source>
        <translation>DDS-Daten</translation>
    </message>
    <message>
        <source>DDS reset</source>
        <translation>DDS-Reset</translation>
    </message>
    <message>
        <source>ADC clock</source>
        <translation>ADC-Takt</translation>
    </message>
    <message>
        <source>ADC select</source>
        <translation>ADC-Select</translation>
    </message>
    <message>
        <source>I2C clock</source>
        <translation>I2C-Takt</translation>
    </message>
    <message>
        <source>I2C data</source>
        <translation>I2C-Daten</translation>
    </message>
    <message>
        <source>Aux data</source>
        <translation>Aux-Daten</translation>
    </message>
    <message>
        <source>Aux clock</source>
        <translation>Aux-Takt</translation>
    </message>
    <message>
        <source>Aux latch</source>
        <translation>Aux-Latch</translation>
    </message>
    <message>
        <source>ADC data</source>
        <translation>ADC-Daten</translation>
    </message>
    <message>
        <source>I2C data back</source>
        <translation>I2C zurück</translation>
    </message>
    <message>
        <source>Ground</source>
        <translation>Masse</translation>
    </message>
    <message>
        <source>DDS %1</source>
        <translation>DDS %1</translation>
    </message>
</context>
<context>
    <name>Profile</name>
    <message>
        <source>it does not exist</source>
        <translation>es gibt sie nicht</translation>
    </message>
    <message>
        <source>it is not UTF-8 text</source>
        <translation>sie ist kein Text in UTF-8</translation>
    </message>
    <message>
        <source>its line endings are not supported (CR only)</source>
        <translation>ihre Zeilenenden werden nicht unterstützt (nur CR)</translation>
    </message>
    <message>
        <source>it contains no settings</source>
        <translation>sie enthält keine Einstellungen</translation>
    </message>
</context>
<context>
    <name>ProgramLock</name>
    <message>
        <source>It is process %1 of user %2.</source>
        <translation>Es ist der Prozess %1 des Benutzers %2.</translation>
    </message>
</context>
<context>
    <name>ReadableFile</name>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
</context>
<context>
    <name>ResultText</name>
    <message>
        <source>Peak</source>
        <translation>Spitze</translation>
    </message>
    <message>
        <source>Peak frequency</source>
        <translation>Spitzenfrequenz</translation>
    </message>
    <message>
        <source>Insertion loss</source>
        <translation>Einfügedämpfung</translation>
    </message>
    <message>
        <source>−3 dB bandwidth</source>
        <translation>−3-dB-Bandbreite</translation>
    </message>
    <message>
        <source>−6 dB bandwidth</source>
        <translation>−6-dB-Bandbreite</translation>
    </message>
    <message>
        <source>−60 dB bandwidth</source>
        <translation>−60-dB-Bandbreite</translation>
    </message>
    <message>
        <source>Centre frequency</source>
        <translation>Mittenfrequenz</translation>
    </message>
    <message>
        <source>Quality factor Q</source>
        <translation>Güte Q</translation>
    </message>
    <message>
        <source>Shape factor</source>
        <translation>Formfaktor</translation>
    </message>
    <message>
        <source>Ripple</source>
        <translation>Welligkeit</translation>
    </message>
    <message>
        <source>Lower slope</source>
        <translation>Untere Flanke</translation>
    </message>
    <message>
        <source>Upper slope</source>
        <translation>Obere Flanke</translation>
    </message>
    <message>
        <source>Notch depth</source>
        <translation>Kerbtiefe</translation>
    </message>
    <message>
        <source>Notch frequency</source>
        <translation>Kerbfrequenz</translation>
    </message>
    <message>
        <source>Series resonance</source>
        <translation>Serienresonanz</translation>
    </message>
    <message>
        <source>Parallel resonance</source>
        <translation>Parallelresonanz</translation>
    </message>
    <message>
        <source>Motional resistance Rm</source>
        <translation>Widerstand Rm</translation>
    </message>
    <message>
        <source>Motional inductance Lm</source>
        <translation>Induktivität Lm</translation>
    </message>
    <message>
        <source>Motional capacitance Cm</source>
        <translation>Kapazität Cm</translation>
    </message>
    <message>
        <source>Parallel capacitance C0</source>
        <translation>Parallelkapazität C0</translation>
    </message>
    <message>
        <source>Return loss</source>
        <translation>Rückflussdämpfung</translation>
    </message>
    <message>
        <source>Reflection |ρ|</source>
        <translation>Reflexion |ρ|</translation>
    </message>
    <message>
        <source>Lowest SWR</source>
        <translation>Kleinstes SWR</translation>
    </message>
    <message>
        <source>Frequency of the lowest SWR</source>
        <translation>Bei der Frequenz</translation>
    </message>
    <message>
        <source>Bandwidth for SWR ≤ 1.5</source>
        <translation>Breite, SWR ≤ 1,5</translation>
    </message>
    <message>
        <source>Bandwidth for SWR ≤ 2</source>
        <translation>Breite, SWR ≤ 2</translation>
    </message>
    <message>
        <source>%1 dB/octave</source>
        <translation>%1 dB/Okt.</translation>
    </message>
    <message>
        <source>no sweep yet</source>
        <translation>noch kein Sweep</translation>
    </message>
    <message>
        <source>below the detector&apos;s floor</source>
        <translation>unter der Schwelle des Detektors</translation>
    </message>
    <message>
        <source>no reference</source>
        <translation>keine Referenz</translation>
    </message>
    <message>
        <source>no parallel resonance inside the range</source>
        <translation>keine Parallelresonanz im Bereich</translation>
    </message>
    <message>
        <source>a gap in the curve</source>
        <translation>eine Lücke in der Kurve</translation>
    </message>
    <message>
        <source>not below the reference</source>
        <translation>nicht unter der Referenz</translation>
    </message>
    <message>
        <source>outside the sweep range</source>
        <translation>außerhalb des Wobbelbereichs</translation>
    </message>
    <message>
        <source>the curve does not reach this level</source>
        <translation>die Kurve erreicht diesen Pegel nicht</translation>
    </message>
</context>
<context>
    <name>RuntimeError</name>
    <message>
        <source>Overflow</source>
        <translation>Überlauf</translation>
    </message>
    <message>
        <source>Type mismatch</source>
        <translation>Falscher Typ</translation>
    </message>
    <message>
        <source>Subscript out of range</source>
        <translation>Index außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>File error</source>
        <translation>Dateifehler</translation>
    </message>
    <message>
        <source>The acquisition server did not carry out a command</source>
        <translation>Der Messserver hat einen Befehl nicht ausgeführt</translation>
    </message>
    <message>
        <source>There is no driver for this interface</source>
        <translation>Für diese Schnittstelle gibt es keinen Treiber</translation>
    </message>
</context>
<context>
    <name>SerialPort</name>
    <message>
        <source>There is no serial port COM%1.</source>
        <translation>Es gibt keinen seriellen Port COM%1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not describe a serial line; it should look like 115200,N,8,1.</source>
        <translation>„%1“ beschreibt keine serielle Leitung; richtig wäre etwa 115200,N,8,1.</translation>
    </message>
    <message>
        <source>There is no device %1; is the cable plugged in?</source>
        <translation>Es gibt kein Gerät %1; steckt das Kabel?</translation>
    </message>
    <message>
        <source>The port %1 is in use by another program.</source>
        <translation>Der Port %1 wird von einem anderen Programm benutzt.</translation>
    </message>
    <message>
        <source>%1 is not a serial port.</source>
        <translation>%1 ist kein serieller Port.</translation>
    </message>
    <message>
        <source>The system has no pseudo-terminal for the simulated board.</source>
        <translation>Das System hat kein Pseudoterminal für die simulierte Platine.</translation>
    </message>
    <message>
        <source>You have no permission to use %1; add your user to the group dialout and log in again.</source>
        <translation>Sie haben keine Berechtigung für %1; Benutzer in die Gruppe dialout aufnehmen und neu anmelden.</translation>
    </message>
</context>
<context>
    <name>SetUp</name>
    <message>
        <source>Unknown device &quot;%1&quot;</source>
        <translation>Unbekannter Baustein „%1“</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>[%1] &quot;%2&quot;: %3 The default %4 is used.</source>
        <translation>[%1] &quot;%2&quot;: %3 Es gilt der Vorgabewert %4.</translation>
    </message>
    <message>
        <source>[%1] &quot;%2&quot;: %3 No port is opened.</source>
        <translation>[%1] &quot;%2&quot;: %3 Es wird kein Port geöffnet.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not &quot;volts;dBm&quot;.</source>
        <translation>„%1“ ist nicht „Volt;dBm“.</translation>
    </message>
    <message>
        <source>A table needs at least two points.</source>
        <translation>Eine Tabelle braucht mindestens zwei Punkte.</translation>
    </message>
    <message>
        <source>[%1] &quot;%2&quot;: %3 The detector is treated as linear.</source>
        <translation>[%1] „%2“: %3 Der Detektor wird als linear behandelt.</translation>
    </message>
    <message>
        <source>This point is missing, but later points exist.</source>
        <translation>Dieser Punkt fehlt, aber spätere Punkte sind vorhanden.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid slope.</source>
        <translation>„%1“ ist keine gültige Steilheit.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid level.</source>
        <translation>„%1“ ist kein gültiger Pegel.</translation>
    </message>
    <message>
        <source>The level must rise or fall steadily with the voltage.</source>
        <translation>Der Pegel muss mit der Spannung durchgehend steigen oder fallen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a known law.</source>
        <translation>„%1“ ist keine bekannte Kennlinie.</translation>
    </message>
    <message>
        <source>the law could not be written to %1</source>
        <translation>die Kennlinie konnte nicht in %1 geschrieben werden</translation>
    </message>
</context>
<context>
    <name>SingleSweep</name>
    <message>
        <source>%1 must lie between %2 and %3 Hz.</source>
        <translation>%1 muss zwischen %2 und %3 Hz liegen.</translation>
    </message>
    <message>
        <source>The %1 could not be opened.</source>
        <translation>Nicht zu öffnen: %1.</translation>
    </message>
    <message>
        <source>The %1 could not be opened (%2).</source>
        <translation>Nicht zu öffnen: %1 (%2).</translation>
    </message>
    <message>
        <source>Sweeping from %1 to %2 Hz</source>
        <translation>Wobbeln von %1 bis %2 Hz</translation>
    </message>
    <message>
        <source>The hardware refused the sweep.</source>
        <translation>Die Hardware hat den Durchlauf abgelehnt.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>Sweep %1 of %2</source>
        <translation>Durchlauf %1 von %2</translation>
    </message>
    <message>
        <source>The settings file %1 cannot be read: %2.</source>
        <translation>Die Datei mit den Einstellungen %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>%1 specifies an unsupported device.</source>
        <translation>%1 nennt einen nicht unterstützten Baustein.</translation>
    </message>
    <message>
        <source>The hardware could not be configured: %1.</source>
        <translation>Die Hardware ließ sich nicht einrichten: %1.</translation>
    </message>
    <message>
        <source>The hardware did not deliver a sweep in time.</source>
        <translation>Die Hardware hat nicht rechtzeitig einen Durchlauf geliefert.</translation>
    </message>
</context>
<context>
    <name>SweepCsv</name>
    <message>
        <source>too many lines</source>
        <translation>zu viele Zeilen</translation>
    </message>
</context>
<context>
    <name>SweepPicture</name>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
    <message>
        <source>Linear scale, 0 to %1 V</source>
        <translation>Lineare Skala, 0 bis %1 V</translation>
    </message>
    <message>
        <source>Logarithmic scale, %1 to %2 dB, 0 dB is %3</source>
        <translation>Logarithmische Skala, %1 bis %2 dB, 0 dB ist %3</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>M1</source>
        <translation>M1</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>M2 - M1</source>
        <translation>M2 - M1</translation>
    </message>
    <message>
        <source>M3</source>
        <translation>M3</translation>
    </message>
    <message>
        <source>M4</source>
        <translation>M4</translation>
    </message>
    <message>
        <source>M4 - M3</source>
        <translation>M4 - M3</translation>
    </message>
    <message>
        <source>Linear scale, 0 to %1, %2</source>
        <translation>Lineare Skala, 0 bis %1, %2</translation>
    </message>
    <message>
        <source>Logarithmic scale, %1 to %2 dB, %3</source>
        <translation>Logarithmische Skala, %1 bis %2 dB, %3</translation>
    </message>
    <message>
        <source>the file name of a picture must end in .png or .svg</source>
        <translation>der Name eines Bildes muss auf .png oder .svg enden</translation>
    </message>
    <message>
        <source>%1 V</source>
        <translation>%1 V</translation>
    </message>
</context>
<context>
    <name>SweepTool</name>
    <message>
        <source>&quot;%1&quot; is not an option; see --help.</source>
        <translation>„%1“ ist keine Option; siehe --help.</translation>
    </message>
    <message>
        <source>--%1 takes the name of a file.</source>
        <translation>--%1 erwartet den Namen einer Datei.</translation>
    </message>
    <message>
        <source>outside the range</source>
        <translation>außerhalb</translation>
    </message>
    <message>
        <source>Peak</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Peak at</source>
        <translation>Maximum bei</translation>
    </message>
    <message>
        <source>-3 dB from</source>
        <translation>-3 dB von</translation>
    </message>
    <message>
        <source>-3 dB to</source>
        <translation>-3 dB bis</translation>
    </message>
    <message>
        <source>-3 dB bandwidth</source>
        <translation>-3-dB-Bandbreite</translation>
    </message>
    <message>
        <source>Write the curve as PNG or SVG.</source>
        <translation>Kurve als PNG oder SVG schreiben.</translation>
    </message>
    <message>
        <source>--%1 takes one of %2, not &quot;%3&quot;.</source>
        <translation>--%1 nimmt einen der Werte %2, nicht „%3“.</translation>
    </message>
    <message>
        <source>Write the sweep as CSV; - is standard output.</source>
        <translation>Schreibt den Sweep als CSV; - ist die Standardausgabe.</translation>
    </message>
    <message>
        <source>--output and --picture name the same file.</source>
        <translation>--output und --picture nennen dieselbe Datei.</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>The reference does not cover the whole range: there are gaps.</source>
        <translation>Die Referenz deckt nicht den ganzen Bereich ab: Es gibt Lücken.</translation>
    </message>
    <message>
        <source>The reference is partly below the detector&apos;s floor: there are gaps.</source>
        <translation>Die Referenz liegt zum Teil unter der Schwelle des Detektors: Es gibt Lücken.</translation>
    </message>
    <message>
        <source>Mean of %1 sweeps</source>
        <translation>Mittel aus %1 Durchläufen</translation>
    </message>
    <message>
        <source>Sweep</source>
        <translation>Durchlauf</translation>
    </message>
    <message>
        <source>relative to %1</source>
        <translation>bezogen auf %1</translation>
    </message>
    <message>
        <source>Upper limit</source>
        <translation>Obere Grenze</translation>
    </message>
    <message>
        <source>Lower limit</source>
        <translation>Untere Grenze</translation>
    </message>
    <message>
        <source>Limits</source>
        <translation>Grenzen</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>nicht bestanden</translation>
    </message>
    <message>
        <source>Worst at</source>
        <translation>Schlechteste bei</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Außerhalb</translation>
    </message>
    <message>
        <source>%1 of %2 points</source>
        <translation>%1 von %2 Punkten</translation>
    </message>
    <message>
        <source>volts</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
    <message>
        <source>Take this many sweeps, %1 to %2, and show their mean.</source>
        <translation>So viele Durchläufe machen, %1 bis %2, und ihr Mittel zeigen.</translation>
    </message>
    <message>
        <source>Print the results of a kind of device: %1.</source>
        <translation>Gibt die Ergebnisse einer Art von Messobjekt aus: %1.</translation>
    </message>
    <message>
        <source>--%1 takes a whole number from %2 to %3, not &quot;%4&quot;.</source>
        <translation>--%1 erwartet eine ganze Zahl von %2 bis %3, nicht „%4“.</translation>
    </message>
    <message>
        <source>--%1 takes a number of ohms above 0, not &quot;%2&quot;.</source>
        <translation>--%1 erwartet eine Zahl von Ohm über 0, nicht „%2“.</translation>
    </message>
    <message>
        <source>--%1 takes at most %2 files.</source>
        <translation>--%1 nimmt höchstens %2 Dateien.</translation>
    </message>
    <message>
        <source>--%1 needs %2.</source>
        <translation>--%1 braucht %2.</translation>
    </message>
    <message>
        <source>--%1 and --%2 name the same file.</source>
        <translation>--%1 und --%2 nennen dieselbe Datei.</translation>
    </message>
    <message>
        <source>the reference</source>
        <translation>die Referenz</translation>
    </message>
    <message>
        <source>--%1 takes a port from 1 to 65535, not &quot;%2&quot;.</source>
        <translation>--%1 braucht einen Port von 1 bis 65535, nicht „%2“.</translation>
    </message>
    <message>
        <source>Show these options.</source>
        <translation>Zeigt diese Optionen.</translation>
    </message>
    <message>
        <source>The limits in %1 are in volts: they need --scale linear, and no --reference.</source>
        <translation>Die Grenzen in %1 sind in Volt: Sie brauchen --scale linear und keine --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 are in dB: they need a --scale in dB, and no --reference.</source>
        <translation>Die Grenzen in %1 sind in dB: Sie brauchen eine --scale in dB und keine --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 are in relative dB: they need a --scale in dB, and a --reference.</source>
        <translation>Die Grenzen in %1 sind in relativen dB: Sie brauchen eine --scale in dB und eine --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 do not cover any point of the sweep.</source>
        <translation>Die Grenzen in %1 betreffen keinen Punkt des Durchlaufs.</translation>
    </message>
    <message>
        <source>Waiting for SCPI clients on port %1</source>
        <translation>Warte auf SCPI-Clients an Port %1</translation>
    </message>
    <message>
        <source>%1: the amplitudes do not match the counts; they are read as %2.</source>
        <translation>%1: Die Amplituden passen nicht zu den Zählwerten; sie werden als %2 gelesen.</translation>
    </message>
    <message>
        <source>Settings file; the window&apos;s file by default.</source>
        <translation>Datei mit den Einstellungen; ohne Angabe die des Fensters.</translation>
    </message>
    <message>
        <source>First frequency in Hz, instead of the one in the settings.</source>
        <translation>Erste Frequenz in Hz, anstelle der eingestellten.</translation>
    </message>
    <message>
        <source>Last frequency in Hz, instead of the one in the settings.</source>
        <translation>Letzte Frequenz in Hz, anstelle der eingestellten.</translation>
    </message>
    <message>
        <source>Take this many sweeps and keep the last; 1 by default.</source>
        <translation>So viele Durchläufe machen und den letzten behalten; ohne Angabe 1.</translation>
    </message>
    <message>
        <source>Read the sweep from a file instead of measuring.</source>
        <translation>Liest den Durchlauf aus einer Datei, statt zu messen.</translation>
    </message>
    <message>
        <source>Show everything relative to the sweep in this file.</source>
        <translation>Zeigt alles bezogen auf den Durchlauf dieser Datei.</translation>
    </message>
    <message>
        <source>Source and load resistance of a crystal fixture, in ohms; %1 by default.</source>
        <translation>Widerstand von Quelle und Last einer Quarzfassung, in Ohm; ohne Angabe %1.</translation>
    </message>
    <message>
        <source>Check the sweep against the limits in this file.</source>
        <translation>Prüft den Durchlauf gegen die Grenzen dieser Datei.</translation>
    </message>
    <message>
        <source>Output format: %1.</source>
        <translation>Format der Ausgabe: %1.</translation>
    </message>
    <message>
        <source>Also draw the sweeps from these files in the picture; at most %1.</source>
        <translation>Zeichnet auch die Durchläufe dieser Dateien in das Bild; höchstens %1.</translation>
    </message>
    <message>
        <source>Accept SCPI commands on this local TCP port until a signal ends the program.</source>
        <translation>Nimmt SCPI-Befehle an diesem lokalen TCP-Port an, bis ein Signal das Programm beendet.</translation>
    </message>
    <message>
        <source>Takes a sweep without a window. Without --output and --picture, it prints the response as figures and a plot.</source>
        <translation>Macht einen Durchlauf ohne Fenster. Ohne --output und --picture erscheint der Frequenzgang in Zahlen und als Kurve.</translation>
    </message>
    <message>
        <source>The file name of a picture must end in .png or .svg, not &quot;%1&quot;.</source>
        <translation>Der Name eines Bildes muss auf .png oder .svg enden, nicht „%1“.</translation>
    </message>
    <message>
        <source>--%1 takes a whole number of at least 1, not &quot;%2&quot;.</source>
        <translation>--%1 erwartet eine ganze Zahl ab 1, nicht „%2“.</translation>
    </message>
    <message>
        <source>--%1 and --%2 cannot be combined.</source>
        <translation>--%1 und --%2 schließen einander aus.</translation>
    </message>
    <message>
        <source>--%1 and --%2 cannot both use standard output.</source>
        <translation>--%1 und --%2 können nicht beide die Standardausgabe benutzen.</translation>
    </message>
    <message>
        <source>--%1 is the settings file.</source>
        <translation>--%1 ist die Datei mit den Einstellungen.</translation>
    </message>
    <message>
        <source>The reference in %1 does not cover any point of the sweep.</source>
        <translation>Die Referenz in %1 deckt keinen Punkt des Durchlaufs ab.</translation>
    </message>
    <message>
        <source>Scale of the amplitudes, instead of the one in the settings: %1; the numbers 0 to %2 mean the same.</source>
        <translation>Skala der Amplituden, anstelle der eingestellten: %1; die Zahlen 0 bis %2 bedeuten dasselbe.</translation>
    </message>
</context>
<context>
    <name>ThreadStart</name>
    <message>
        <source>The computer cannot start another thread; close other programs and try again.</source>
        <translation>Der Computer kann keinen weiteren Thread starten; bitte andere Programme beenden und noch einmal versuchen.</translation>
    </message>
</context>
<context>
    <name>TraceFile</name>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, Zeile %2: %3</translation>
    </message>
    <message>
        <source>%1: the frequencies are not equally spaced.</source>
        <translation>%1: Die Frequenzen haben keine gleichen Abstände.</translation>
    </message>
</context>
<context>
    <name>calvorn::AcquisitionDriver</name>
    <message>
        <source>Wrong serial port number (COM%1).</source>
        <translation>Falsche Nummer des seriellen Ports (COM%1).</translation>
    </message>
    <message>
        <source>Please verify &apos;SetUp/Configuration/Ports&apos;.</source>
        <translation>Bitte &apos;Einstellungen/Konfiguration/Ports&apos; prüfen.</translation>
    </message>
    <message>
        <source>The acquisition server has ended unexpectedly.</source>
        <translation>Der Messserver hat sich unerwartet beendet.</translation>
    </message>
    <message>
        <source>Start sweep</source>
        <translation>Wobbeln gestartet</translation>
    </message>
    <message>
        <source>it did not answer in time and was terminated</source>
        <translation>er hat nicht rechtzeitig geantwortet und wurde beendet</translation>
    </message>
    <message>
        <source>The acquisition server did not answer and was terminated.</source>
        <translation>Der Messserver hat nicht geantwortet und wurde beendet.</translation>
    </message>
    <message>
        <source>The acquisition server sent an endless stream of events and was terminated.</source>
        <translation>Der Messserver sandte Ereignisse ohne Ende und wurde beendet.</translation>
    </message>
    <message>
        <source>&quot;Sweep ON&quot; restarts it.</source>
        <translation>„Wobbeln EIN“ startet ihn wieder.</translation>
    </message>
</context>
<context>
    <name>calvorn::AcquisitionServer</name>
    <message>
        <source>cannot create a socket in %1: %2</source>
        <translation>in %1 kann kein Socket angelegt werden: %2</translation>
    </message>
</context>
<context>
    <name>calvorn::AdcPage</name>
    <message>
        <source>Detector</source>
        <translation>Detektor</translation>
    </message>
    <message>
        <source>&amp;Step - mV per count</source>
        <translation>Schri&amp;tt - mV je Zählwert</translation>
    </message>
    <message>
        <source>C&amp;hannel</source>
        <translation>&amp;Kanal</translation>
    </message>
    <message>
        <source>The step is the reference voltage of the converter divided by its counts: 2.5 V are 2.441 mV per count with 10 bits, and 9.766 mV with 8 bits.</source>
        <translation>Der Schritt ist die Referenzspannung des Wandlers geteilt durch seine Stufen: 2,5 V ergeben mit 10 Bit 2,441 mV je Zählwert, mit 8 Bit 9,766 mV.</translation>
    </message>
    <message>
        <source>&amp;8 bit</source>
        <translation>&amp;8 Bit</translation>
    </message>
    <message>
        <source>1&amp;0 bit</source>
        <translation>1&amp;0 Bit</translation>
    </message>
    <message>
        <source>Counts from 0 to 255</source>
        <translation>Zählwerte von 0 bis 255</translation>
    </message>
    <message>
        <source>Counts from 0 to 1023</source>
        <translation>Zählwerte von 0 bis 1023</translation>
    </message>
    <message>
        <source>Converter</source>
        <translation>Wandler</translation>
    </message>
    <message>
        <source>Millivolts at the detector for one count of the converter</source>
        <translation>Millivolt am Detektor für einen Zählwert des Wandlers</translation>
    </message>
    <message>
        <source>Step in mV per count</source>
        <translation>Schritt in mV je Zählwert</translation>
    </message>
    <message>
        <source>MiniVNA: 1 angle, 2 return loss, 3 device under test. The other interfaces do not use it.</source>
        <translation>MiniVNA: 1 Winkel, 2 Rückflussdämpfung, 3 Messobjekt. Die anderen Schnittstellen brauchen ihn nicht.</translation>
    </message>
    <message>
        <source>Channel of the converter</source>
        <translation>Kanal des Wandlers</translation>
    </message>
    <message>
        <source>Offset: </source>
        <translation>Offset: </translation>
    </message>
    <message>
        <source>not used by this interface</source>
        <translation>von dieser Schnittstelle nicht verwendet</translation>
    </message>
    <message>
        <source>angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>return loss</source>
        <translation>Rückflussdämpfung</translation>
    </message>
    <message>
        <source>device under test</source>
        <translation>Messobjekt</translation>
    </message>
    <message>
        <source>1 angle, 2 return loss, 3 device under test</source>
        <translation>1 Winkel, 2 Rückflussdämpfung, 3 Messobjekt</translation>
    </message>
    <message>
        <source>Set by &quot;SetUp/Calibrate detector&quot;; added to every voltage</source>
        <translation>Mit „Einstellungen/Detektor kalibrieren“ gesetzt, zu jeder Spannung addiert</translation>
    </message>
    <message>
        <source>Meaning of the number</source>
        <translation>Bedeutung der Zahl</translation>
    </message>
</context>
<context>
    <name>calvorn::AmplitudeAxis</name>
    <message>
        <source>Top of the linear scale in volts, up to 10</source>
        <translation>Vollausschlag der linearen Skala in Volt, bis 10</translation>
    </message>
    <message>
        <source>Full scale in volts</source>
        <translation>Vollausschlag in Volt</translation>
    </message>
    <message>
        <source>Bottom of the logarithmic scales in dB, down to -90</source>
        <translation>Unteres Ende der logarithmischen Skalen in dB, bis -90</translation>
    </message>
    <message>
        <source>Lowest level in dB</source>
        <translation>Niedrigster Pegel in dB</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Unit of the amplitude axis</source>
        <translation>Einheit der Amplitudenachse</translation>
    </message>
    <message>
        <source>Amplitude at this line of the grid</source>
        <translation>Amplitude an dieser Gitterlinie</translation>
    </message>
    <message>
        <source>Amplitude label %1</source>
        <translation>Amplitudenbeschriftung %1</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>Verhältnis</translation>
    </message>
    <message>
        <source>%1, relative</source>
        <translation>%1, relativ</translation>
    </message>
</context>
<context>
    <name>calvorn::AuxOutput</name>
    <message>
        <source>This output is not enabled in the configuration.</source>
        <translation>Dieser Ausgang ist in der Konfiguration nicht freigegeben.</translation>
    </message>
    <message>
        <source>Click: off, half, on</source>
        <translation>Klick: aus, halb, ein</translation>
    </message>
    <message>
        <source>Sum of the steps that are on</source>
        <translation>Summe der eingeschalteten Stufen</translation>
    </message>
    <message>
        <source>Total of output %1</source>
        <translation>Summe von Ausgang %1</translation>
    </message>
    <message>
        <source>Digital potentiometer</source>
        <translation>Digitales Potentiometer</translation>
    </message>
    <message>
        <source>Position of the potentiometer</source>
        <translation>Stellung des Potentiometers</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>Potentiometer</source>
        <translation>Potentiometer</translation>
    </message>
</context>
<context>
    <name>calvorn::AuxPage</name>
    <message>
        <source>Auxiliary outputs (parallel port only)</source>
        <translation>Zusatzausgänge (nur Parallelport)</translation>
    </message>
    <message>
        <source>Output %1</source>
        <translation>Ausgang %1</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Freigegeben</translation>
    </message>
    <message>
        <source>Output %1 enabled</source>
        <translation>Ausgang %1 freigegeben</translation>
    </message>
    <message>
        <source>Inverse logic</source>
        <translation>Invertiert</translation>
    </message>
    <message>
        <source>Output %1 inverse</source>
        <translation>Ausgang %1 invertiert</translation>
    </message>
    <message>
        <source>The heading of this output in the main window</source>
        <translation>Die Überschrift dieses Ausgangs im Hauptfenster</translation>
    </message>
    <message>
        <source>Title of output %1</source>
        <translation>Titel von Ausgang %1</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Value - dB</source>
        <translation>Wert - dB</translation>
    </message>
    <message>
        <source>Enter the label or leave &apos;blank&apos; to disable this button</source>
        <translation>Beschriftung eingeben, oder leer lassen, um den Knopf abzuschalten</translation>
    </message>
    <message>
        <source>Output %1, label of step %2</source>
        <translation>Ausgang %1, Beschriftung der Stufe %2</translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation>Stufe %1</translation>
    </message>
    <message>
        <source>Enter the value to be sent to the attenuator</source>
        <translation>Wert eingeben, der an das Dämpfungsglied geht</translation>
    </message>
    <message>
        <source>Output %1, value of step %2</source>
        <translation>Ausgang %1, Wert der Stufe %2</translation>
    </message>
    <message>
        <source>Potentiometer</source>
        <translation>Potentiometer</translation>
    </message>
    <message>
        <source>Range of the potentiometer</source>
        <translation>Bereich des Potentiometers</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Show the buttons of this output in the main window</source>
        <translation>Knöpfe dieses Ausgangs im Hauptfenster zeigen</translation>
    </message>
    <message>
        <source>Invert every bit of the byte</source>
        <translation>Alle Bits des Bytes invertieren</translation>
    </message>
    <message>
        <source>Highest position, 0 to 255; leave empty if there is no potentiometer</source>
        <translation>Höchste Stellung, 0 bis 255; leer ohne Potentiometer</translation>
    </message>
    <message>
        <source>Lowest position, 0 to 255; leave empty if there is no potentiometer</source>
        <translation>Niedrigste Stellung, 0 bis 255; leer ohne Potentiometer</translation>
    </message>
    <message>
        <source>Range of the potentiometer in the main window</source>
        <translation>Bereich des Potentiometers im Hauptfenster</translation>
    </message>
</context>
<context>
    <name>calvorn::AxisMenus</name>
    <message>
        <source>M1 -&gt; &amp;Start</source>
        <translation>M1 -&gt; &amp;Start</translation>
    </message>
    <message>
        <source>M2 -&gt; S&amp;top</source>
        <translation>M2 -&gt; S&amp;top</translation>
    </message>
    <message>
        <source>Set the start frequency to M1</source>
        <translation>Startfrequenz auf M1 setzen</translation>
    </message>
    <message>
        <source>Set the stop frequency to M2</source>
        <translation>Stoppfrequenz auf M2 setzen</translation>
    </message>
</context>
<context>
    <name>calvorn::BoardMenus</name>
    <message>
        <source>&amp;Simulated board</source>
        <translation>&amp;Simulierte Platine</translation>
    </message>
    <message>
        <source>M&amp;iniVNA mode</source>
        <translation>M&amp;iniVNA-Messart</translation>
    </message>
    <message>
        <source>&amp;Band-pass filter, 7.1 MHz</source>
        <translation>&amp;Bandpass, 7,1 MHz</translation>
    </message>
    <message>
        <source>&amp;Low-pass filter, 7 MHz</source>
        <translation>&amp;Tiefpass, 7 MHz</translation>
    </message>
    <message>
        <source>&amp;Notch, 7 MHz</source>
        <translation>&amp;Kerbfilter, 7 MHz</translation>
    </message>
    <message>
        <source>&amp;Crystal, 9 MHz</source>
        <translation>&amp;Quarz, 9 MHz</translation>
    </message>
    <message>
        <source>&amp;Through, a piece of cable</source>
        <translation>&amp;Durchgang, ein Stück Kabel</translation>
    </message>
    <message>
        <source>Simulated board: %1</source>
        <translation>Simulierte Platine: %1</translation>
    </message>
    <message>
        <source>&amp;Antenna at a bridge, 7.05 MHz</source>
        <translation>&amp;Antenne an einer Brücke, 7,05 MHz</translation>
    </message>
    <message>
        <source>From a &amp;file</source>
        <translation>Aus einer &amp;Datei</translation>
    </message>
</context>
<context>
    <name>calvorn::CalibrationDialog</name>
    <message>
        <source>&amp;Apply</source>
        <translation>Ü&amp;bernehmen</translation>
    </message>
    <message>
        <source>&amp;EXIT</source>
        <translation>SCHLI&amp;ESSEN</translation>
    </message>
    <message>
        <source>Apply this offset; it is saved when the program closes</source>
        <translation>Diesen Offset anwenden; er wird beim Beenden gespeichert</translation>
    </message>
    <message>
        <source>Close without applying the offset</source>
        <translation>Schließen, ohne den Offset anzuwenden</translation>
    </message>
</context>
<context>
    <name>calvorn::DdsPage</name>
    <message>
        <source>Synthesiser</source>
        <translation>Synthesizer</translation>
    </message>
    <message>
        <source>AD985&amp;0</source>
        <translation>AD985&amp;0</translation>
    </message>
    <message>
        <source>AD985&amp;1</source>
        <translation>AD985&amp;1</translation>
    </message>
    <message>
        <source>AD99&amp;51</source>
        <translation>AD99&amp;51</translation>
    </message>
    <message>
        <source>System clock up to 125 MHz, useful up to 40 MHz</source>
        <translation>Systemtakt bis 125 MHz, nutzbar bis 40 MHz</translation>
    </message>
    <message>
        <source>System clock up to 180 MHz with its six-fold multiplier, useful up to 70 MHz</source>
        <translation>Systemtakt bis 180 MHz mit seinem Sechsfach-Multiplikator, nutzbar bis 70 MHz</translation>
    </message>
    <message>
        <source>System clock up to 400 MHz with its multiplier of 4 to 20, useful up to 160 MHz</source>
        <translation>Systemtakt bis 400 MHz mit seinem Multiplikator von 4 bis 20, nutzbar bis 160 MHz</translation>
    </message>
    <message>
        <source>DDS chip</source>
        <translation>DDS-Baustein</translation>
    </message>
    <message>
        <source>Reference clock multiplier × &amp;6</source>
        <translation>Taktmultiplikator × &amp;6</translation>
    </message>
    <message>
        <source>Frequency of the crystal oscillator on the board, in Hz</source>
        <translation>Frequenz des Quarzoszillators auf der Platine, in Hz</translation>
    </message>
    <message>
        <source>Reference clock in Hz</source>
        <translation>Referenztakt in Hz</translation>
    </message>
    <message>
        <source>&amp;Reference clock - Hz</source>
        <translation>&amp;Referenztakt - Hz</translation>
    </message>
    <message>
        <source>&amp;No multiplier</source>
        <translation>&amp;Kein Multiplikator</translation>
    </message>
    <message>
        <source>The reference clock is the system clock</source>
        <translation>Der Referenztakt ist der Systemtakt</translation>
    </message>
    <message>
        <source>M&amp;ultiplier</source>
        <translation>M&amp;ultiplikator</translation>
    </message>
    <message>
        <source>The chip multiplies the reference clock by 4 to 20</source>
        <translation>Der Baustein multipliziert den Referenztakt mit 4 bis 20</translation>
    </message>
    <message>
        <source>Factor of the multiplier, 4 to 20</source>
        <translation>Faktor des Multiplikators, 4 bis 20</translation>
    </message>
    <message>
        <source>Factor of the multiplier</source>
        <translation>Faktor des Multiplikators</translation>
    </message>
    <message>
        <source>The highest frequency that can be entered, in Hz</source>
        <translation>Die höchste Frequenz, die sich eingeben lässt, in Hz</translation>
    </message>
    <message>
        <source>Maximum frequency in Hz</source>
        <translation>Maximalfrequenz in Hz</translation>
    </message>
    <message>
        <source>The lowest frequency that can be entered, in Hz</source>
        <translation>Die niedrigste Frequenz, die sich eingeben lässt, in Hz</translation>
    </message>
    <message>
        <source>Minimum frequency in Hz</source>
        <translation>Minimalfrequenz in Hz</translation>
    </message>
    <message>
        <source>Reference clock × multiplier</source>
        <translation>Referenztakt × Multiplikator</translation>
    </message>
    <message>
        <source>System clock in Hz</source>
        <translation>Systemtakt in Hz</translation>
    </message>
    <message>
        <source>Limits of the chip</source>
        <translation>Grenzen des Bausteins</translation>
    </message>
    <message>
        <source>Clock and limits</source>
        <translation>Takt und Grenzen</translation>
    </message>
    <message>
        <source>System clock - Hz</source>
        <translation>Systemtakt - Hz</translation>
    </message>
    <message>
        <source>Ma&amp;ximum frequency - Hz</source>
        <translation>Ma&amp;ximalfrequenz - Hz</translation>
    </message>
    <message>
        <source>Minimum frequenc&amp;y - Hz</source>
        <translation>Minima&amp;lfrequenz - Hz</translation>
    </message>
    <message>
        <source>Frequency offset: </source>
        <translation>Frequenzoffset: </translation>
    </message>
    <message>
        <source>The chip multiplies the reference clock by 6</source>
        <translation>Der Baustein multipliziert den Referenztakt mit 6</translation>
    </message>
    <message>
        <source>Specified limits of the chip</source>
        <translation>Grenzwerte des Bausteins laut Datenblatt</translation>
    </message>
    <message>
        <source>Set by &quot;SetUp/Calibrate generator&quot;; added to every frequency</source>
        <translation>Mit „Einstellungen/Generator kalibrieren“ gesetzt, zu jeder Frequenz addiert</translation>
    </message>
</context>
<context>
    <name>calvorn::DetectorLawBox</name>
    <message>
        <source>Law</source>
        <translation>Kennlinie</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>Linear</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>Logarithmisch</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Slope and intercept from the data sheet of a detector</source>
        <translation>Steilheit und Schnittpunkt aus dem Datenblatt eines Detektors</translation>
    </message>
    <message>
        <source>Another</source>
        <translation>Ein anderer</translation>
    </message>
    <message>
        <source>La&amp;w</source>
        <translation>Kenn&amp;linie</translation>
    </message>
    <message>
        <source>Detecto&amp;r</source>
        <translation>Detekto&amp;r</translation>
    </message>
    <message>
        <source>Slope - &amp;mV per dB</source>
        <translation>Steilheit - &amp;mV je dB</translation>
    </message>
    <message>
        <source>I&amp;ntercept - dBm</source>
        <translation>Sch&amp;nittpunkt - dBm</translation>
    </message>
    <message>
        <source>Slope in mV per dB</source>
        <translation>Steilheit in mV je dB</translation>
    </message>
    <message>
        <source>Intercept in dBm</source>
        <translation>Schnittpunkt in dBm</translation>
    </message>
    <message>
        <source>About the chosen law</source>
        <translation>Zur gewählten Kennlinie</translation>
    </message>
    <message>
        <source>Relation between input level and detector voltage</source>
        <translation>Zusammenhang zwischen Eingangspegel und Detektorspannung</translation>
    </message>
    <message>
        <source>Millivolts per dB, 1 to 1000; negative if the voltage falls as the level rises</source>
        <translation>Millivolt pro dB, von 1 bis 1000; negativ, wenn die Spannung mit steigendem Pegel fällt</translation>
    </message>
    <message>
        <source>Level at which the detector&apos;s line reaches 0 V</source>
        <translation>Der Pegel, bei dem die Gerade des Detektors 0 V erreicht</translation>
    </message>
    <message>
        <source>There is no table yet: create one with &quot;SetUp/Calibrate level&quot;.</source>
        <translation>Es gibt noch keine Tabelle: mit „Einstellungen/Pegel kalibrieren“ anlegen.</translation>
    </message>
    <message>
        <source>The voltages are those at the detector output.</source>
        <translation>Die Spannungen gelten am Detektorausgang.</translation>
    </message>
    <message>
        <source>The voltages are RMS at the input, into 50 ohms.</source>
        <translation>Die Spannungen sind Effektivwerte am Eingang, an 50 Ohm.</translation>
    </message>
    <message>
        <source>%1 points from %2 to %3 dBm, created with &quot;SetUp/Calibrate level&quot;</source>
        <translation>%1 Punkte von %2 bis %3 dBm, erstellt mit „Einstellungen/Pegel kalibrieren“</translation>
    </message>
</context>
<context>
    <name>calvorn::DigitBars</name>
    <message>
        <source>Step this digit</source>
        <translation>Diese Ziffer ändern</translation>
    </message>
    <message>
        <source>Digit %1</source>
        <translation>Ziffer %1</translation>
    </message>
</context>
<context>
    <name>calvorn::DriverEvents</name>
    <message>
        <source>Stop sweep</source>
        <translation>Wobbeln gestoppt</translation>
    </message>
    <message>
        <source>Mode: %1</source>
        <translation>Messart: %1</translation>
    </message>
</context>
<context>
    <name>calvorn::FrequencyLabels</name>
    <message>
        <source>Frequencies of the grid</source>
        <translation>Frequenzen des Rasters</translation>
    </message>
</context>
<context>
    <name>calvorn::FrequencyReadouts</name>
    <message>
        <source>start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Frequency of the first sample, Hz</source>
        <translation>Frequenz des ersten Messpunkts, Hz</translation>
    </message>
    <message>
        <source>center</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Frequency of sample 200, Hz</source>
        <translation>Frequenz des Messpunkts 200, Hz</translation>
    </message>
    <message>
        <source>stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Frequency of the last sample, Hz</source>
        <translation>Frequenz des letzten Messpunkts, Hz</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmAbout</name>
    <message>
        <source>About Calvorn</source>
        <translation>Über Calvorn</translation>
    </message>
    <message>
        <source>Interface:</source>
        <translation>Schnittstelle:</translation>
    </message>
    <message>
        <source>DDS Device:</source>
        <translation>DDS-Baustein:</translation>
    </message>
    <message>
        <source>DAC Device:</source>
        <translation>DAC-Baustein:</translation>
    </message>
    <message>
        <source>Without any warranty. Check your wiring before you switch on.</source>
        <translation>Ohne jede Gewähr. Vor dem Einschalten die Verdrahtung prüfen.</translation>
    </message>
    <message>
        <source>Free to use, change and pass on under the terms of the MIT licence.</source>
        <translation>Darf nach der MIT-Lizenz frei benutzt, geändert und weitergegeben werden.</translation>
    </message>
    <message>
        <source>EXIT</source>
        <translation>SCHLIESSEN</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Dieses Fenster schließen</translation>
    </message>
    <message>
        <source>, ClockRef: </source>
        <translation>, Referenztakt: </translation>
    </message>
    <message>
        <source>MHz, Multiplier: </source>
        <translation>MHz, Multiplikator: </translation>
    </message>
    <message>
        <source>, Max frequency: </source>
        <translation>, max. Frequenz: </translation>
    </message>
    <message>
        <source>Calvorn %1, made by the Calvorn authors for radio amateurs.</source>
        <translation>Calvorn %1, von den Calvorn-Autoren für Funkamateure gemacht.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraADC</name>
    <message>
        <source>Detector calibration</source>
        <translation>Detektor kalibrieren</translation>
    </message>
    <message>
        <source>1. Select &apos;View/Table&apos; and &apos;Scale/Linear&apos;.</source>
        <translation>1. &apos;Ansicht/Tabelle&apos; und &apos;Skala/Linear&apos; wählen.</translation>
    </message>
    <message>
        <source>2. Connect the input of the detector to a known voltage.</source>
        <translation>2. Den Eingang des Detektors an eine bekannte Spannung legen.</translation>
    </message>
    <message>
        <source>3. Adjust the offset until the right voltage is presented.</source>
        <translation>3. Den Offset ändern, bis die richtige Spannung erscheint.</translation>
    </message>
    <message>
        <source>4. Everytime you &apos;Apply&apos;, table will be updated with the new offset</source>
        <translation>4. Mit jedem &apos;Übernehmen&apos; folgt die Tabelle dem neuen Offset</translation>
    </message>
    <message>
        <source>Offset - Volt</source>
        <translation>Offset - Volt</translation>
    </message>
    <message>
        <source>Step the offset by 0.001 V</source>
        <translation>Offset um 0,001 V ändern</translation>
    </message>
    <message>
        <source>The voltage that the detector reads with this offset</source>
        <translation>Die Spannung, die der Detektor mit diesem Offset misst</translation>
    </message>
    <message>
        <source>Detector - Volt</source>
        <translation>Detektor - Volt</translation>
    </message>
    <message>
        <source>This interface reads its detector only during sweeps.</source>
        <translation>Diese Schnittstelle liest ihren Detektor nur beim Wobbeln.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraDDS</name>
    <message>
        <source>Generator calibration</source>
        <translation>Generator kalibrieren</translation>
    </message>
    <message>
        <source>1. Select any start frequency.</source>
        <translation>1. Eine beliebige Startfrequenz wählen.</translation>
    </message>
    <message>
        <source>2. Connect the output of the generator to a frequency meter.</source>
        <translation>2. Den Ausgang des Generators mit einem Frequenzzähler verbinden.</translation>
    </message>
    <message>
        <source>3. Adjust the offset until the meter shows the right start frequency.</source>
        <translation>3. Den Offset ändern, bis der Zähler die richtige Startfrequenz zeigt.</translation>
    </message>
    <message>
        <source>4. Apply</source>
        <translation>4. Übernehmen</translation>
    </message>
    <message>
        <source>Offset - Hz</source>
        <translation>Offset - Hz</translation>
    </message>
    <message>
        <source>Step the offset by 0.01 Hz</source>
        <translation>Offset um 0,01 Hz ändern</translation>
    </message>
    <message>
        <source>Start frequency in Hz</source>
        <translation>Startfrequenz in Hz</translation>
    </message>
    <message>
        <source>Start frequency - Hz</source>
        <translation>Startfrequenz - Hz</translation>
    </message>
    <message>
        <source>Expected reading of the frequency meter</source>
        <translation>Sollwert des Frequenzzählers</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraLevel</name>
    <message>
        <source>&amp;Measure</source>
        <translation>&amp;Messen</translation>
    </message>
    <message>
        <source>Level calibration</source>
        <translation>Pegelkalibrierung</translation>
    </message>
    <message>
        <source>1. Connect a source of known level to the detector, through a step attenuator.</source>
        <translation>1. Eine Quelle mit bekanntem Pegel über ein schaltbares Dämpfungsglied an den Detektor anschließen.</translation>
    </message>
    <message>
        <source>A sweep is running: stop it first.</source>
        <translation>Ein Durchlauf läuft: zuerst anhalten.</translation>
    </message>
    <message>
        <source>The hardware is not connected.</source>
        <translation>Die Hardware ist nicht verbunden.</translation>
    </message>
    <message>
        <source>&amp;Source - dBm</source>
        <translation>&amp;Quelle - dBm</translation>
    </message>
    <message>
        <source>A&amp;ttenuator - dB</source>
        <translation>&amp;Dämpfung - dB</translation>
    </message>
    <message>
        <source>&amp;Logarithmic</source>
        <translation>&amp;Logarithmisch</translation>
    </message>
    <message>
        <source>Slope and intercept that fit the points best</source>
        <translation>Steilheit und Schnittpunkt, die am besten zu den Punkten passen</translation>
    </message>
    <message>
        <source>Ta&amp;ble</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>dBm</source>
        <translation>dBm</translation>
    </message>
    <message>
        <source>Spread - mV</source>
        <translation>Streuung - mV</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>Ü&amp;bernehmen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Reading the detector ...</source>
        <translation>Der Detektor wird gelesen ...</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 Punkte</translation>
    </message>
    <message>
        <source>%1 mV per dB, intercept %2 dBm, %3</source>
        <translation>%1 mV je dB, Schnittpunkt %2 dBm, %3</translation>
    </message>
    <message>
        <source>Points still needed: %1</source>
        <translation>Noch nötige Punkte: %1</translation>
    </message>
    <message>
        <source>mV</source>
        <translation>mV</translation>
    </message>
    <message>
        <source>%1 readings: %2 mV</source>
        <translation>%1 Messwerte: %2 mV</translation>
    </message>
    <message>
        <source>Attenuation between source and detector, in dB</source>
        <translation>Dämpfung zwischen Quelle und Detektor, in dB</translation>
    </message>
    <message>
        <source>2. Enter its level and the attenuation, and press &quot;Measure&quot;.</source>
        <translation>2. Ihren Pegel und die Dämpfung eingeben und „Messen“ drücken.</translation>
    </message>
    <message>
        <source>3. Repeat this with the next step. A logarithmic law needs two points, a table three.</source>
        <translation>3. Mit der nächsten Stufe wiederholen. Eine logarithmische Kennlinie braucht zwei Punkte, eine Tabelle drei.</translation>
    </message>
    <message>
        <source>Result of the last measurement</source>
        <translation>Ergebnis der letzten Messung</translation>
    </message>
    <message>
        <source>The instrument measures the phase: choose RetLoss or DUT.</source>
        <translation>Das Gerät misst die Phase: RetLoss oder DUT wählen.</translation>
    </message>
    <message>
        <source>The measured points, and the error of the law at each of them</source>
        <translation>Die gemessenen Punkte und der Fehler der Kennlinie an jedem</translation>
    </message>
    <message>
        <source>Error - dB</source>
        <translation>Fehler - dB</translation>
    </message>
    <message>
        <source>Remove the selected points</source>
        <translation>Entfernt die markierten Punkte</translation>
    </message>
    <message>
        <source>The law calculated from the points</source>
        <translation>Die aus den Punkten berechnete Kennlinie</translation>
    </message>
    <message>
        <source>Use this law and save it in the settings</source>
        <translation>Diese Kennlinie verwenden und in den Einstellungen speichern</translation>
    </message>
    <message>
        <source>largest error %1 dB</source>
        <translation>größter Fehler %1 dB</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Ohne Änderung schließen</translation>
    </message>
    <message>
        <source>Level of the source, in dBm into 50 ohms</source>
        <translation>Der Pegel der Quelle, in dBm an 50 Ohm</translation>
    </message>
    <message>
        <source>Read the detector %1 times at this level</source>
        <translation>Detektor bei diesem Pegel %1-mal lesen</translation>
    </message>
    <message>
        <source>You can use the board&apos;s generator as the source: it is set to the start frequency.</source>
        <translation>Der Generator der Platine kann die Quelle sein: Er wird auf die Startfrequenz gesetzt.</translation>
    </message>
    <message>
        <source>The measured points, with interpolation between them</source>
        <translation>Die gemessenen Punkte, dazwischen interpoliert</translation>
    </message>
    <message>
        <source>A table has at most %1 points.</source>
        <translation>Eine Tabelle hat höchstens %1 Punkte.</translation>
    </message>
    <message>
        <source>The best-fit line has a slope outside 1 to 1000 mV per dB, or an intercept beyond ±200 dBm: no law can be calculated.</source>
        <translation>Die beste Gerade hat eine Steilheit außerhalb von 1 bis 1000 mV pro dB oder einen Achsenabschnitt jenseits von ±200 dBm: keine Kennlinie berechenbar.</translation>
    </message>
    <message>
        <source>The voltage does not rise or fall steadily with the level: no law can be calculated.</source>
        <translation>Die Spannung steigt oder fällt nicht durchgehend mit dem Pegel: keine Kennlinie berechenbar.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmPreferences</name>
    <message>
        <source>Preferences</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Cursor type</source>
        <translation>Art des Cursors</translation>
    </message>
    <message>
        <source>&amp;Linked</source>
        <translation>&amp;Gekoppelt</translation>
    </message>
    <message>
        <source>&amp;Floating cross</source>
        <translation>&amp;Mitlaufendes Kreuz</translation>
    </message>
    <message>
        <source>The read-out follows the mouse</source>
        <translation>Die Anzeige folgt der Maus</translation>
    </message>
    <message>
        <source>EXIT</source>
        <translation>SCHLIESSEN</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Dieses Fenster schließen</translation>
    </message>
    <message>
        <source>Limit the Logaritmic Scales to the range of the ADC (%1)</source>
        <translation>Logarithmische Skalen auf den Bereich des ADC begrenzen (%1)</translation>
    </message>
    <message>
        <source>This box has no effect: the scales keep their full range.</source>
        <translation>Dieses Kästchen hat keine Wirkung: Die Skalen behalten ihren vollen Bereich.</translation>
    </message>
    <message>
        <source>Remote control</source>
        <translation>Fernsteuerung</translation>
    </message>
    <message>
        <source>TCP port</source>
        <translation>TCP-Port</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>&amp;Port</translation>
    </message>
    <message>
        <source>A cross follows the curve under the mouse</source>
        <translation>Ein Kreuz folgt der Kurve unter der Maus</translation>
    </message>
    <message>
        <source>No effect. The number is the minimum level that the converter can distinguish from zero, in dB</source>
        <translation>Ohne Wirkung. Die Zahl ist der niedrigste Pegel, den der Wandler von null unterscheidet, in dB</translation>
    </message>
    <message>
        <source>Allow &amp;SCPI clients on this computer</source>
        <translation>&amp;SCPI-Clients auf diesem Rechner zulassen</translation>
    </message>
    <message>
        <source>Let your own programs on this computer control the window</source>
        <translation>Lässt Ihre eigenen Programme auf diesem Rechner das Fenster steuern</translation>
    </message>
    <message>
        <source>TCP port for the clients</source>
        <translation>TCP-Port für die Clients</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSetUp</name>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>&amp;Interface</source>
        <translation>&amp;Schnittstelle</translation>
    </message>
    <message>
        <source>Which hardware is connected</source>
        <translation>Welche Hardware angeschlossen ist</translation>
    </message>
    <message>
        <source>Syn&amp;thesiser</source>
        <translation>S&amp;ynthesizer</translation>
    </message>
    <message>
        <source>The generator chip, its clock and its limits</source>
        <translation>Der Generatorbaustein, sein Takt und seine Grenzen</translation>
    </message>
    <message>
        <source>&amp;Detector</source>
        <translation>&amp;Detektor</translation>
    </message>
    <message>
        <source>The converter of the detector</source>
        <translation>Der Wandler des Detektors</translation>
    </message>
    <message>
        <source>Auxi&amp;liary</source>
        <translation>&amp;Zusatz</translation>
    </message>
    <message>
        <source>The auxiliary outputs of the parallel-port board</source>
        <translation>Die Zusatzausgänge der Parallelport-Platine</translation>
    </message>
    <message>
        <source>&amp;Ports</source>
        <translation>&amp;Ports</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>Ü&amp;bernehmen</translation>
    </message>
    <message>
        <source>&amp;EXIT</source>
        <translation>SCHLI&amp;ESSEN</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Einige Einstellungen waren nicht lesbar.</translation>
    </message>
    <message>
        <source>Please confirm, now program will exit.</source>
        <translation>Bitte bestätigen: Das Programm wird jetzt beendet.</translation>
    </message>
    <message>
        <source>Please restart.</source>
        <translation>Bitte neu starten.</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Ohne Änderung schließen</translation>
    </message>
    <message>
        <source>The serial port and the parallel port</source>
        <translation>Der serielle und der parallele Port</translation>
    </message>
    <message>
        <source>Save the configuration and close the program; changes take effect at the next start</source>
        <translation>Konfiguration speichern und Programm beenden; Änderungen gelten ab dem nächsten Start</translation>
    </message>
    <message>
        <source>the configuration could not be written to %1</source>
        <translation>die Konfiguration ließ sich nicht in %1 schreiben</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSpan</name>
    <message>
        <source>Centre and span</source>
        <translation>Mitte und Spanne</translation>
    </message>
    <message>
        <source>&amp;Centre - Hz</source>
        <translation>&amp;Mitte - Hz</translation>
    </message>
    <message>
        <source>&amp;Span - Hz</source>
        <translation>&amp;Spanne - Hz</translation>
    </message>
    <message>
        <source>Enter the width of the range in Hz</source>
        <translation>Breite des Bereichs in Hz eingeben</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Sweep this range</source>
        <translation>Diesen Bereich wobbeln</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Enter the centre of the range in Hz</source>
        <translation>Mitte des Bereichs in Hz eingeben</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Ohne Änderung schließen</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSweep</name>
    <message>
        <source>EXIT</source>
        <translation>ENDE</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>S&amp;cale</source>
        <translation>&amp;Skala</translation>
    </message>
    <message>
        <source>&amp;SetUp</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Preferences</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source> : Unknow DDSdevice.</source>
        <translation> : unbekannter DDS-Baustein.</translation>
    </message>
    <message>
        <source>Supported DDS generators are: AD9850, AD9851, AD9951</source>
        <translation>Unterstützte DDS-Generatoren: AD9850, AD9851, AD9951</translation>
    </message>
    <message>
        <source> : Unknow ADCdevice.</source>
        <translation> : unbekannter ADC-Baustein.</translation>
    </message>
    <message>
        <source>Supported ADC are: 8bit, 10bit</source>
        <translation>Unterstützte ADC: 8bit, 10bit</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Einige Einstellungen waren nicht lesbar.</translation>
    </message>
    <message>
        <source>The settings could not be saved in %1</source>
        <translation>Die Einstellungen ließen sich nicht in %1 speichern</translation>
    </message>
    <message>
        <source>The settings file %1 is not used: %2.</source>
        <translation>Die Datei mit den Einstellungen %1 wird nicht verwendet: %2.</translation>
    </message>
    <message>
        <source>Last message</source>
        <translation>Letzte Meldung</translation>
    </message>
    <message>
        <source>S&amp;weep</source>
        <translation>&amp;Wobbeln</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>%1 of %2 samples are outside the detector&apos;s calibrated range</source>
        <translation>%1 von %2 Proben liegen außerhalb des kalibrierten Bereichs des Detektors</translation>
    </message>
    <message>
        <source>Save the settings and close the program</source>
        <translation>Einstellungen speichern und Programm beenden</translation>
    </message>
</context>
<context>
    <name>calvorn::GeneratorBox</name>
    <message>
        <source>Generator</source>
        <translation>Generator</translation>
    </message>
    <message>
        <source>Frequency - Hz</source>
        <translation>Frequenz - Hz</translation>
    </message>
    <message>
        <source>The frequency of the generator in Hz</source>
        <translation>Die Frequenz des Generators in Hz</translation>
    </message>
    <message>
        <source>&amp;Generator ON</source>
        <translation>&amp;Generator EIN</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>T&amp;iefer</translation>
    </message>
    <message>
        <source>One step down</source>
        <translation>Einen Schritt tiefer</translation>
    </message>
    <message>
        <source>U&amp;p</source>
        <translation>Höhe&amp;r</translation>
    </message>
    <message>
        <source>One step up</source>
        <translation>Einen Schritt höher</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>Mer&amp;ken</translation>
    </message>
    <message>
        <source>Memory %1</source>
        <translation>Speicher %1</translation>
    </message>
    <message>
        <source>&amp;Generator OFF</source>
        <translation>&amp;Generator AUS</translation>
    </message>
    <message>
        <source>The generator is on.</source>
        <translation>Der Generator ist eingeschaltet.</translation>
    </message>
    <message>
        <source>The generator is off.</source>
        <translation>Der Generator ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>St&amp;ep - Hz</source>
        <translation>S&amp;chritt - Hz</translation>
    </message>
    <message>
        <source>State of the generator; a sweep, the meter or a setting ends its use as a signal source</source>
        <translation>Zustand des Generators; ein Durchlauf, die Pegelmessung oder eine Einstellung beendet seinen Einsatz als Signalquelle</translation>
    </message>
    <message>
        <source>Switch the generator on or off</source>
        <translation>Schaltet den Generator ein und aus</translation>
    </message>
    <message>
        <source>Step of &quot;Up&quot; and &quot;Down&quot;, in Hz</source>
        <translation>Schrittweite von „Höher“ und „Tiefer“, in Hz</translation>
    </message>
    <message>
        <source>Stored frequencies: choose one to use it; to store another, type a name and press &quot;Keep&quot;</source>
        <translation>Gespeicherte Frequenzen: eine wählen, um sie zu benutzen; um eine weitere zu speichern, einen Namen eingeben und „Merken“ drücken</translation>
    </message>
    <message>
        <source>Store the frequency in the selected memory, with the name shown</source>
        <translation>Frequenz im gewählten Speicher unter dem angezeigten Namen speichern</translation>
    </message>
    <message>
        <source>The generator is not in use as a signal source.</source>
        <translation>Der Generator dient nicht als Signalquelle.</translation>
    </message>
</context>
<context>
    <name>calvorn::HeightHandle</name>
    <message>
        <source>Height of the view</source>
        <translation>Höhe der Ansicht</translation>
    </message>
    <message>
        <source>Drag to resize the view; double-click to restore its default height</source>
        <translation>Ziehen ändert die Höhe der Ansicht; ein Doppelklick stellt die Standardhöhe her</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpBrowser</name>
    <message>
        <source>Help page</source>
        <translation>Hilfeseite</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpDesk</name>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>Open the manual</source>
        <translation>Handbuch öffnen</translation>
    </message>
    <message>
        <source>&amp;This window</source>
        <translation>&amp;Dieses Fenster</translation>
    </message>
    <message>
        <source>The help file %1 is missing or damaged.</source>
        <translation>Die Hilfedatei %1 fehlt oder ist beschädigt.</translation>
    </message>
    <message>
        <source>Help for the active window</source>
        <translation>Hilfe zum aktiven Fenster</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpResults</name>
    <message>
        <source>Search results</source>
        <translation>Gefundene Seiten der Hilfe</translation>
    </message>
    <message>
        <source>No page contains these words.</source>
        <translation>Keine Seite enthält diese Wörter.</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpWindow</name>
    <message>
        <source>Calvorn Help</source>
        <translation>Calvorn-Hilfe</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>&amp;Index</source>
        <translation>Inde&amp;x</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suche</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>First page</source>
        <translation>Erste Seite</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Help contents</source>
        <translation>Inhalt der Hilfe</translation>
    </message>
    <message>
        <source>Search for</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Word to find in the index</source>
        <translation>Wort, das im Index gesucht wird</translation>
    </message>
    <message>
        <source>Help index</source>
        <translation>Index der Hilfe</translation>
    </message>
</context>
<context>
    <name>calvorn::InterfacePage</name>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>PI&amp;C 16F877 board on USB</source>
        <translation>PI&amp;C-16F877-Platine an USB</translation>
    </message>
    <message>
        <source>DDS/DAC &amp;board on the parallel port</source>
        <translation>DDS/DAC-Pla&amp;tine am Parallelport</translation>
    </message>
    <message>
        <source>&amp;MiniVNA on USB</source>
        <translation>&amp;MiniVNA an USB</translation>
    </message>
    <message>
        <source>A generator and detector with a microcontroller, on a serial port (COM)</source>
        <translation>Generator und Detektor mit Mikrocontroller, an einem seriellen Port (COM)</translation>
    </message>
    <message>
        <source>A generator and detector on a parallel port (LPT), with two auxiliary outputs</source>
        <translation>Generator und Detektor an einem Parallelport (LPT), mit zwei Zusatzausgängen</translation>
    </message>
    <message>
        <source>The vector analyser for 0.1 to 180 MHz, on a serial port (COM)</source>
        <translation>Der Vektoranalysator für 0,1 bis 180 MHz, an einem seriellen Port (COM)</translation>
    </message>
    <message>
        <source>Default &amp;1</source>
        <translation>Vorgabe &amp;1</translation>
    </message>
    <message>
        <source>Default &amp;2</source>
        <translation>Vorgabe &amp;2</translation>
    </message>
    <message>
        <source>Default &amp;3</source>
        <translation>Vorgabe &amp;3</translation>
    </message>
    <message>
        <source>Default configuration: %1</source>
        <translation>Vorgaben: %1</translation>
    </message>
    <message>
        <source>Without hardware: choose any interface, then a simulated board on the &quot;Ports&quot; page: LPT0 for the parallel port, COM100 for the two others.</source>
        <translation>Ohne Hardware: eine Schnittstelle wählen, dann auf der Seite „Ports“ eine simulierte Platine: LPT0 für den Parallelport, COM100 für die beiden anderen.</translation>
    </message>
    <message>
        <source>Sorry, default value not found.</source>
        <translation>Leider keine Vorgaben gefunden.</translation>
    </message>
    <message>
        <source>Default value for PIC not found.</source>
        <translation>Keine Vorgaben für den PIC gefunden.</translation>
    </message>
    <message>
        <source>Default value for DDS/DAC connencted to LPT not found.</source>
        <translation>Keine Vorgaben für DDS/DAC am LPT gefunden.</translation>
    </message>
    <message>
        <source>Default value for MiniVNA not found.</source>
        <translation>Keine Vorgaben für das MiniVNA gefunden.</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Einige Einstellungen waren nicht lesbar.</translation>
    </message>
    <message>
        <source>Choosing an interface loads its prepared configuration.</source>
        <translation>Die Wahl einer Schnittstelle lädt ihre Vorgaben.</translation>
    </message>
    <message>
        <source>Choose this interface and load its prepared configuration, discarding all changes</source>
        <translation>Diese Schnittstelle wählen und ihre Vorgaben laden; alle Änderungen gehen verloren</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelBox</name>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>Atten&amp;uator - dB</source>
        <translation>Dämpf&amp;ung - dB</translation>
    </message>
    <message>
        <source>The level at the input, into 50 ohms</source>
        <translation>Der Pegel am Eingang, an 50 Ohm</translation>
    </message>
    <message>
        <source>Volts RMS at the input</source>
        <translation>Volt effektiv am Eingang</translation>
    </message>
    <message>
        <source>Power into 50 ohms</source>
        <translation>Leistung an 50 Ohm</translation>
    </message>
    <message>
        <source>The lowest and the highest level so far</source>
        <translation>Der bisher niedrigste und höchste Pegel</translation>
    </message>
    <message>
        <source>From -80 to 20 dBm</source>
        <translation>Von -80 bis 20 dBm</translation>
    </message>
    <message>
        <source>&amp;Zero</source>
        <translation>Nu&amp;ll</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>At full scale: the level may be higher.</source>
        <translation>Am Vollausschlag: Der Pegel kann höher sein.</translation>
    </message>
    <message>
        <source>H&amp;old</source>
        <translation>&amp;Festhalten</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>Neu &amp;beginnen</translation>
    </message>
    <message>
        <source>Loss of an attenuator in front of the detector; it is added to the level</source>
        <translation>Dämpfung vor dem Detektor; sie wird zum Pegel addiert</translation>
    </message>
    <message>
        <source>Outside the detector&apos;s calibrated range.</source>
        <translation>Außerhalb des kalibrierten Bereichs des Detektors.</translation>
    </message>
    <message>
        <source>Below the detector&apos;s floor.</source>
        <translation>Unter der Grenze des Detektors.</translation>
    </message>
    <message>
        <source>Reset minimum and maximum</source>
        <translation>Minimum und Maximum zurücksetzen</translation>
    </message>
    <message>
        <source>Relative to the level when you pressed &quot;Zero&quot;</source>
        <translation>Bezogen auf den Pegel, bei dem „Null“ gedrückt wurde</translation>
    </message>
    <message>
        <source>Warning about the reading</source>
        <translation>Warnung zum Messwert</translation>
    </message>
    <message>
        <source>Stop the meter and keep its readings</source>
        <translation>Hält die Messung an; die Zahlen bleiben stehen</translation>
    </message>
    <message>
        <source>Use the current level as 0 dB</source>
        <translation>Aktuellen Pegel als 0 dB verwenden</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelCurve</name>
    <message>
        <source>The detector&apos;s voltage against the level; below it, the error of the law at each point</source>
        <translation>Spannung des Detektors über dem Pegel, darunter der Fehler der Kennlinie an jedem Punkt</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelPage</name>
    <message>
        <source>The hardware is not connected.</source>
        <translation>Die Hardware ist nicht verbunden.</translation>
    </message>
    <message>
        <source>The instrument measures the phase: choose RetLoss or DUT.</source>
        <translation>Das Gerät misst die Phase: RetLoss oder DUT wählen.</translation>
    </message>
    <message>
        <source>A sweep is running: the meter continues afterwards.</source>
        <translation>Ein Durchlauf läuft: Danach misst der Pegelmesser weiter.</translation>
    </message>
    <message>
        <source>The generator is on: this interface reads the detector only during sweeps.</source>
        <translation>Der Generator ist eingeschaltet: Diese Schnittstelle kann den Detektor nur in Durchläufen lesen.</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelReader</name>
    <message>
        <source>The board returned no reading.</source>
        <translation>Die Platine liefert keinen Messwert.</translation>
    </message>
</context>
<context>
    <name>calvorn::LimitsPage</name>
    <message>
        <source>Verdict on the last sweep</source>
        <translation>Urteil über den letzten Durchlauf</translation>
    </message>
    <message>
        <source>&amp;Zero</source>
        <translation>N&amp;ull</translation>
    </message>
    <message>
        <source>Points of the limits</source>
        <translation>Punkte der Grenzen</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Upper</source>
        <translation>Obere</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Untere</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>Hinzu&amp;fügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>Entfe&amp;rnen</translation>
    </message>
    <message>
        <source>By clic&amp;k</source>
        <translation>M&amp;it Klick</translation>
    </message>
    <message>
        <source>upper</source>
        <translation>obere</translation>
    </message>
    <message>
        <source>lower</source>
        <translation>untere</translation>
    </message>
    <message>
        <source>L&amp;ive ±</source>
        <translation>A&amp;ktuell ±</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>Margin between the limits and the sweep</source>
        <translation>Abstand der Grenzen vom Durchlauf</translation>
    </message>
    <message>
        <source>&amp;Load…</source>
        <translation>&amp;Laden…</translation>
    </message>
    <message>
        <source>Sav&amp;e…</source>
        <translation>Spei&amp;chern…</translation>
    </message>
    <message>
        <source>PASS</source>
        <translation>BESTANDEN</translation>
    </message>
    <message>
        <source>FAIL</source>
        <translation>NICHT BESTANDEN</translation>
    </message>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
    <message>
        <source>Below the detector&apos;s floor at %1 Hz</source>
        <translation>Unter der Schwelle des Detektors bei %1 Hz</translation>
    </message>
    <message>
        <source>Nearest: %1 %2 inside, at %3 Hz</source>
        <translation>Nächster Punkt: %1 %2 innerhalb, bei %3 Hz</translation>
    </message>
    <message>
        <source>Worst: %1 %2 outside, at %3 Hz</source>
        <translation>Schlechtester Punkt: %1 %2 außerhalb, bei %3 Hz</translation>
    </message>
    <message>
        <source>%1 passed, %2 failed</source>
        <translation>%1 bestanden, %2 nicht</translation>
    </message>
    <message>
        <source>Limits (*.csv)</source>
        <translation>Grenzen (*.csv)</translation>
    </message>
    <message>
        <source>Check ever&amp;y sweep</source>
        <translation>&amp;Jeden Durchlauf prüfen</translation>
    </message>
    <message>
        <source>Draw the limits and show whether each sweep is within them</source>
        <translation>Zeichnet die Grenzen und zeigt, ob jeder Durchlauf sie einhält</translation>
    </message>
    <message>
        <source>&amp;Beep on change</source>
        <translation>T&amp;on beim Wechsel</translation>
    </message>
    <message>
        <source>Beep when the verdict changes between PASS and FAIL</source>
        <translation>Ton, wenn das Urteil zwischen PASS und FAIL wechselt</translation>
    </message>
    <message>
        <source>Reset the counts</source>
        <translation>Zähler zurücksetzen</translation>
    </message>
    <message>
        <source>Add a point at M1, at the level of M3</source>
        <translation>Fügt einen Punkt bei M1 auf der Höhe von M3 hinzu</translation>
    </message>
    <message>
        <source>Remove the selected points</source>
        <translation>Entfernt die gewählten Punkte</translation>
    </message>
    <message>
        <source>Each click in the graph adds a point to this limit</source>
        <translation>Jeder Klick in den Graphen fügt dieser Grenze einen Punkt hinzu</translation>
    </message>
    <message>
        <source>The limit to which new points are added</source>
        <translation>Die Grenze, zu der neue Punkte hinzugefügt werden</translation>
    </message>
    <message>
        <source>Create both limits from the current sweep</source>
        <translation>Macht beide Grenzen aus dem gezeigten Durchlauf</translation>
    </message>
    <message>
        <source>Load limits from a file</source>
        <translation>Lädt die Grenzen aus einer Datei</translation>
    </message>
    <message>
        <source>Save the limits to a file</source>
        <translation>Speichert die Grenzen in eine Datei</translation>
    </message>
    <message>
        <source>Limits (*.csv);;All files (*)</source>
        <translation>Grenzen (*.csv);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::LogList</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message>
        <source>the log list is full</source>
        <translation>das Protokoll ist voll</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Textdateien (*.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>calvorn::LptDriver</name>
    <message>
        <source>Parallel port not initialized.</source>
        <translation>Parallelport nicht initialisiert.</translation>
    </message>
    <message>
        <source>Driver not found or wrong LPT address.</source>
        <translation>Treiber nicht gefunden oder falsche LPT-Adresse.</translation>
    </message>
    <message>
        <source>Please verify &apos;SetUp/Configuration/Ports&apos;.</source>
        <translation>Bitte &apos;Einstellungen/Konfiguration/Ports&apos; prüfen.</translation>
    </message>
    <message>
        <source>Start/step sweep reinizializzati</source>
        <translation>Start und Schrittweite neu gesetzt</translation>
    </message>
    <message>
        <source>No sweep is running.</source>
        <translation>Es läuft kein Durchlauf.</translation>
    </message>
    <message>
        <source>Unknown generator chip: %1</source>
        <translation>Unbekannter Generatorbaustein: %1</translation>
    </message>
    <message>
        <source>Unknown detector converter: %1</source>
        <translation>Unbekannter Detektorwandler: %1</translation>
    </message>
    <message>
        <source>Unknown sweep speed: %1</source>
        <translation>Unbekannte Wobbelgeschwindigkeit: %1</translation>
    </message>
    <message>
        <source>The parallel port is not open.</source>
        <translation>Der Parallelport ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>Unknown auxiliary output: %1</source>
        <translation>Unbekannter Zusatzausgang: %1</translation>
    </message>
</context>
<context>
    <name>calvorn::LptPinDrawing</name>
    <message>
        <source>Pin %1</source>
        <translation>Pin %1</translation>
    </message>
    <message>
        <source>not used</source>
        <translation>nicht benutzt</translation>
    </message>
    <message>
        <source>, inverted by the board</source>
        <translation>, von der Platine invertiert</translation>
    </message>
    <message>
        <source>Pins of the parallel port</source>
        <translation>Pins des Parallelports</translation>
    </message>
</context>
<context>
    <name>calvorn::LptPinWindow</name>
    <message>
        <source>Pins of the parallel port</source>
        <translation>Pins des Parallelports</translation>
    </message>
    <message>
        <source>With this wiring the port cannot be opened. Correct the settings file.</source>
        <translation>Mit dieser Verdrahtung lässt sich der Port nicht öffnen. Bitte die Einstellungsdatei berichtigen.</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>The plug of the board&apos;s cable, viewed from the pin side. Green: to the board; blue: from the board; &quot;!&quot;: inverted by the board. To change the wiring, edit the section [LPT Wiring] of the settings file.</source>
        <translation>Der Stecker am Kabel der Platine, auf die Stifte gesehen. Grün: zur Platine; blau: von der Platine; „!“: von der Platine invertiert. Die Verdrahtung wird im Abschnitt [LPT Wiring] der Einstellungsdatei geändert.</translation>
    </message>
</context>
<context>
    <name>calvorn::MarkerPanel</name>
    <message>
        <source>Enter freq in Hz or ClickLeft the graph</source>
        <translation>Frequenz in Hz eingeben oder links in die Kurve klicken</translation>
    </message>
    <message>
        <source>Frequency of M1 in Hz</source>
        <translation>Frequenz von M1 in Hz</translation>
    </message>
    <message>
        <source>Enter freq in Hz or ClickRight the graph</source>
        <translation>Frequenz in Hz eingeben oder rechts in die Kurve klicken</translation>
    </message>
    <message>
        <source>Frequency of M2 in Hz</source>
        <translation>Frequenz von M2 in Hz</translation>
    </message>
    <message>
        <source>Enter volt/dB or SHIFT+ ClickLeft the graph</source>
        <translation>Volt/dB eingeben oder mit UMSCHALT links in die Kurve klicken</translation>
    </message>
    <message>
        <source>Amplitude of M3</source>
        <translation>Amplitude von M3</translation>
    </message>
    <message>
        <source>Enter volt/dB or SHIFT ClickRight the graph</source>
        <translation>Volt/dB eingeben oder mit UMSCHALT rechts in die Kurve klicken</translation>
    </message>
    <message>
        <source>Amplitude of M4</source>
        <translation>Amplitude von M4</translation>
    </message>
    <message>
        <source>Amplitude of the curve at M1</source>
        <translation>Amplitude der Kurve bei M1</translation>
    </message>
    <message>
        <source>Amplitude at M1</source>
        <translation>Amplitude bei M1</translation>
    </message>
    <message>
        <source>Amplitude of the curve at M2</source>
        <translation>Amplitude der Kurve bei M2</translation>
    </message>
    <message>
        <source>Amplitude at M2</source>
        <translation>Amplitude bei M2</translation>
    </message>
    <message>
        <source>Distance of M1 and M2 in Hz</source>
        <translation>Abstand von M1 und M2 in Hz</translation>
    </message>
    <message>
        <source>M2 - M1 in Hz</source>
        <translation>M2 - M1 in Hz</translation>
    </message>
    <message>
        <source>Difference of M4 and M3</source>
        <translation>Differenz von M4 und M3</translation>
    </message>
    <message>
        <source>M4 - M3</source>
        <translation>M4 - M3</translation>
    </message>
    <message>
        <source>Frequency under the mouse in Hz</source>
        <translation>Frequenz unter der Maus in Hz</translation>
    </message>
    <message>
        <source>Frequency under the mouse</source>
        <translation>Frequenz unter der Maus</translation>
    </message>
    <message>
        <source>Amplitude under the mouse</source>
        <translation>Amplitude unter der Maus</translation>
    </message>
    <message>
        <source>M1 -&gt; Start</source>
        <translation>M1 -&gt; Start</translation>
    </message>
    <message>
        <source>Sweep from the frequency of M1</source>
        <translation>Ab der Frequenz von M1 wobbeln</translation>
    </message>
    <message>
        <source>M2 -&gt; Stop</source>
        <translation>M2 -&gt; Stopp</translation>
    </message>
    <message>
        <source>Sweep up to the frequency of M2</source>
        <translation>Bis zur Frequenz von M2 wobbeln</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Unit of the amplitudes</source>
        <translation>Einheit der Amplituden</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>M1</source>
        <translation>M1</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>M2 - M1</source>
        <translation>M2 - M1</translation>
    </message>
    <message>
        <source>M3</source>
        <translation>M3</translation>
    </message>
    <message>
        <source>M4</source>
        <translation>M4</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>Cursor</translation>
    </message>
</context>
<context>
    <name>calvorn::MeasureDock</name>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>M&amp;easure</source>
        <translation>M&amp;essen</translation>
    </message>
    <message>
        <source>Traces</source>
        <translation>Kurven</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Limits</source>
        <translation>Grenzen</translation>
    </message>
    <message>
        <source>&amp;Normalise</source>
        <translation>&amp;Normalisieren</translation>
    </message>
    <message>
        <source>More pages</source>
        <translation>Weitere Seiten</translation>
    </message>
    <message>
        <source>Stored traces, results, limits, level meter and generator</source>
        <translation>Gespeicherte Kurven, Ergebnisse, Grenzen, Pegelmesser und Generator</translation>
    </message>
    <message>
        <source>Use the current sweep as the reference and show the curves relative to it. The table keeps the measured values.</source>
        <translation>Verwendet den aktuellen Durchlauf als Referenz und zeigt die Kurven auf ihn bezogen. Die Tabelle behält die Messwerte.</translation>
    </message>
    <message>
        <source>Put the panel back into the window</source>
        <translation>Das Panel wieder in das Fenster setzen</translation>
    </message>
    <message>
        <source>Dock</source>
        <translation>Andocken</translation>
    </message>
</context>
<context>
    <name>calvorn::Measurement</name>
    <message>
        <source>Gaps: the reference is below the detector&apos;s floor.</source>
        <translation>Lücken: Die Referenz liegt unter der Schwelle des Detektors.</translation>
    </message>
    <message>
        <source>There are no limits.</source>
        <translation>Es gibt keine Grenzen.</translation>
    </message>
    <message>
        <source>There is no sweep yet.</source>
        <translation>Es gibt noch keinen Durchlauf.</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Aktuell</translation>
    </message>
    <message>
        <source>Average of %1</source>
        <translation>Mittel aus %1</translation>
    </message>
    <message>
        <source>Max hold</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Min hold</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>relative to the reference</source>
        <translation>bezogen auf die Referenz</translation>
    </message>
    <message>
        <source>Live, relative</source>
        <translation>Aktuell, relativ</translation>
    </message>
    <message>
        <source>Upper limit</source>
        <translation>Obere Grenze</translation>
    </message>
    <message>
        <source>Lower limit</source>
        <translation>Untere Grenze</translation>
    </message>
    <message>
        <source>Gaps: the reference has no data there, or is below the detector&apos;s floor.</source>
        <translation>Lücken: Die Referenz reicht nicht bis dorthin oder liegt unter der Schwelle des Detektors.</translation>
    </message>
    <message>
        <source>Gaps: the reference has no data there.</source>
        <translation>Lücken: Die Referenz reicht nicht bis dorthin.</translation>
    </message>
    <message>
        <source>These limits are in volts: choose the linear scale, without a reference.</source>
        <translation>Diese Grenzen sind in Volt: die lineare Skala wählen, ohne Referenz.</translation>
    </message>
    <message>
        <source>These limits are in dB: choose a dB scale, without a reference.</source>
        <translation>Diese Grenzen sind in dB: eine Skala in dB wählen, ohne Referenz.</translation>
    </message>
    <message>
        <source>These limits are in dB relative to a reference: choose a dB scale, and press &quot;Normalise&quot;.</source>
        <translation>Diese Grenzen sind in dB gegenüber einer Referenz: eine Skala in dB wählen und „Normalisieren“ drücken.</translation>
    </message>
    <message>
        <source>The limits do not cover any sample.</source>
        <translation>Die Grenzen decken keinen Messpunkt ab.</translation>
    </message>
</context>
<context>
    <name>calvorn::PicDriver</name>
    <message>
        <source>DDS not initialized</source>
        <translation>DDS nicht initialisiert</translation>
    </message>
    <message>
        <source>Verify the serial interface.</source>
        <translation>Bitte die serielle Schnittstelle prüfen.</translation>
    </message>
    <message>
        <source>Errore inizializza ciclo sweep</source>
        <translation>Fehler beim Vorbereiten des Durchlaufs</translation>
    </message>
    <message>
        <source>Frequency not iniatized.</source>
        <translation>Frequenz nicht gesetzt.</translation>
    </message>
    <message>
        <source>DDS frequency not initialized</source>
        <translation>DDS-Frequenz nicht gesetzt</translation>
    </message>
    <message>
        <source>Start frequency not initialized</source>
        <translation>Startfrequenz nicht gesetzt</translation>
    </message>
    <message>
        <source>Step frequency not initialized</source>
        <translation>Schrittweite nicht gesetzt</translation>
    </message>
    <message>
        <source>The board does not answer.</source>
        <translation>Die Platine antwortet nicht.</translation>
    </message>
    <message>
        <source>The board did not start the sweep.</source>
        <translation>Die Platine startet den Durchlauf nicht.</translation>
    </message>
    <message>
        <source>The board does not know the command &quot;%1&quot;.</source>
        <translation>Die Platine kennt den Befehl „%1“ nicht.</translation>
    </message>
    <message>
        <source>The board did not identify itself: &quot;%1&quot;.</source>
        <translation>Die Platine hat sich nicht ausgewiesen: „%1“.</translation>
    </message>
    <message>
        <source>The board does not support a settling time of %1 µs.</source>
        <translation>Die Platine unterstützt keine Einschwingzeit von %1 µs.</translation>
    </message>
    <message>
        <source>A sweep from the board was damaged during transmission.</source>
        <translation>Ein Durchlauf der Platine wurde auf der Leitung beschädigt.</translation>
    </message>
    <message>
        <source>The board no longer delivers valid sweeps; the sweep ends.</source>
        <translation>Die Platine liefert keine brauchbaren Durchläufe mehr; das Wobbeln endet.</translation>
    </message>
</context>
<context>
    <name>calvorn::PortPage</name>
    <message>
        <source>Ports</source>
        <translation>Ports</translation>
    </message>
    <message>
        <source>Serial port (PIC, MiniVNA)</source>
        <translation>Serieller Port (PIC, MiniVNA)</translation>
    </message>
    <message>
        <source>COMx</source>
        <translation>COMx</translation>
    </message>
    <message>
        <source>Number of the serial port</source>
        <translation>Nummer des seriellen Ports</translation>
    </message>
    <message>
        <source>LPT0 simulated (0x000)</source>
        <translation>LPT0 simuliert (0x000)</translation>
    </message>
    <message>
        <source>LPT1, port 888 (0x378)</source>
        <translation>LPT1, Port 888 (0x378)</translation>
    </message>
    <message>
        <source>LPT2, port 632 (0x278)</source>
        <translation>LPT2, Port 632 (0x278)</translation>
    </message>
    <message>
        <source>LPT3, port 956 (0x3BC)</source>
        <translation>LPT3, Port 956 (0x3BC)</translation>
    </message>
    <message>
        <source>LPTx, port</source>
        <translation>LPTx, Port</translation>
    </message>
    <message>
        <source>Parallel port (DDS/DAC board)</source>
        <translation>Parallelport (DDS/DAC-Platine)</translation>
    </message>
    <message>
        <source>Base address of the parallel port, decimal, up to 65535</source>
        <translation>Basisadresse des Parallelports, dezimal, bis 65535</translation>
    </message>
    <message>
        <source>Address of the parallel port</source>
        <translation>Adresse des Parallelports</translation>
    </message>
    <message>
        <source>The same address, hexadecimal</source>
        <translation>Dieselbe Adresse, hexadezimal</translation>
    </message>
    <message>
        <source>Pins of the &amp;board...</source>
        <translation>Pins der Pl&amp;atine...</translation>
    </message>
    <message>
        <source>Show which pin of the port carries which signal</source>
        <translation>Zeigt, welcher Pin des Ports welches Signal führt</translation>
    </message>
    <message>
        <source>COM%1</source>
        <translation>COM%1</translation>
    </message>
    <message>
        <source> NOT available</source>
        <translation> NICHT da</translation>
    </message>
    <message>
        <source>COM%1: a simulated board</source>
        <translation>COM%1: eine simulierte Platine</translation>
    </message>
    <message>
        <source>Number of the port; %1 is a simulated board</source>
        <translation>Nummer des Ports; %1 ist eine simulierte Platine</translation>
    </message>
    <message>
        <source>simulated board</source>
        <translation>simuliertes Board</translation>
    </message>
    <message>
        <source>no device</source>
        <translation>kein Gerät</translation>
    </message>
    <message>
        <source>no known port</source>
        <translation>kein Port bekannt</translation>
    </message>
    <message>
        <source>Access &amp;rule...</source>
        <translation>Zugriffs&amp;regel...</translation>
    </message>
    <message>
        <source>Save a udev rule that lets the user at this computer open the board</source>
        <translation>Speichert eine udev-Regel, mit der der Benutzer an diesem Rechner die Platine öffnen darf</translation>
    </message>
    <message>
        <source>The port with this number; %1 is a simulated board</source>
        <translation>Der Port mit dieser Nummer; %1 ist eine simulierte Platine</translation>
    </message>
    <message>
        <source>Shows whether a port with this number exists</source>
        <translation>Zeigt, ob es einen Port mit dieser Nummer gibt</translation>
    </message>
    <message>
        <source>This number has no device. You can assign one in the [Ports] section of the settings file.</source>
        <translation>Zu dieser Nummer gehört kein Gerät. Im Abschnitt [Ports] der Einstellungsdatei lässt sich eins zuweisen.</translation>
    </message>
    <message>
        <source>Available when a connected USB board is selected</source>
        <translation>Verfügbar, wenn eine angeschlossene USB-Platine gewählt ist</translation>
    </message>
    <message>
        <source>A simulated board, to use the program without hardware</source>
        <translation>Eine simulierte Platine, um das Programm ohne Hardware zu benutzen</translation>
    </message>
    <message>
        <source>The system knows no port at this address</source>
        <translation>Das System kennt keinen Port an dieser Adresse</translation>
    </message>
    <message>
        <source>A port at this address, for instance on a card</source>
        <translation>Ein Port an dieser Adresse, etwa auf einer Steckkarte</translation>
    </message>
    <message>
        <source>Rules for udev (*.rules);;All files (*)</source>
        <translation>Regeln für udev (*.rules);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::RangeEntry</name>
    <message>
        <source>Start Frequency - Hz</source>
        <translation>Startfrequenz - Hz</translation>
    </message>
    <message>
        <source>Enter the start frequency in Hz</source>
        <translation>Startfrequenz in Hz eingeben</translation>
    </message>
    <message>
        <source>Stop Frequency - Hz</source>
        <translation>Stoppfrequenz - Hz</translation>
    </message>
    <message>
        <source>Enter the stop frequency in Hz</source>
        <translation>Stoppfrequenz in Hz eingeben</translation>
    </message>
    <message>
        <source>Distance between two samples in Hz</source>
        <translation>Abstand zweier Messpunkte in Hz</translation>
    </message>
    <message>
        <source>Step in Hz</source>
        <translation>Schrittweite in Hz</translation>
    </message>
    <message>
        <source>Step - Hz</source>
        <translation>Schritt - Hz</translation>
    </message>
    <message>
        <source>Number of samples in the range</source>
        <translation>Anzahl der Messpunkte im Bereich</translation>
    </message>
    <message>
        <source>Minimum sweeping range is </source>
        <translation>Der kleinste Wobbelbereich ist </translation>
    </message>
    <message>
        <source>N.Campioni </source>
        <translation>Messpunkte </translation>
    </message>
</context>
<context>
    <name>calvorn::ReadOut</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>calvorn::RemoteControl</name>
    <message>
        <source>SCPI: port %1, clients: %2</source>
        <translation>SCPI %1, Clients: %2</translation>
    </message>
    <message>
        <source>SCPI: port %1</source>
        <translation>SCPI: Port %1</translation>
    </message>
</context>
<context>
    <name>calvorn::ResultsPage</name>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Notch</source>
        <translation>Kerbfilter</translation>
    </message>
    <message>
        <source>Crystal</source>
        <translation>Quarz</translation>
    </message>
    <message>
        <source>Match with a bridge</source>
        <translation>Anpassung mit Brücke</translation>
    </message>
    <message>
        <source>&amp;Results of</source>
        <translation>E&amp;rgebnisse für</translation>
    </message>
    <message>
        <source>Live sweep</source>
        <translation>Aktueller Durchlauf</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Fr&amp;om</source>
        <translation>A&amp;us</translation>
    </message>
    <message>
        <source> Ω</source>
        <translation> Ω</translation>
    </message>
    <message>
        <source>Fi&amp;xture</source>
        <translation>&amp;Fassung</translation>
    </message>
    <message>
        <source>&amp;Peak</source>
        <translation>S&amp;pitze</translation>
    </message>
    <message>
        <source>M&amp;inimum</source>
        <translation>Min&amp;imum</translation>
    </message>
    <message>
        <source>◀ Peak</source>
        <translation>◀ Spitze</translation>
    </message>
    <message>
        <source>Peak ▶</source>
        <translation>Spitze ▶</translation>
    </message>
    <message>
        <source>−&amp;3 dB</source>
        <translation>−&amp;3 dB</translation>
    </message>
    <message>
        <source>−&amp;6 dB</source>
        <translation>−&amp;6 dB</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>How far a peak must rise above the valleys on both sides</source>
        <translation>Wie weit eine Spitze über die Täler zu beiden Seiten ragen muss</translation>
    </message>
    <message>
        <source>M1 tr&amp;acks the peak</source>
        <translation>M1 fol&amp;gt der Spitze</translation>
    </message>
    <message>
        <source>Peaks of at &amp;least</source>
        <translation>Spit&amp;zen ab</translation>
    </message>
    <message>
        <source>At M1</source>
        <translation>Bei M1</translation>
    </message>
    <message>
        <source>At M2</source>
        <translation>Bei M2</translation>
    </message>
    <message>
        <source>%1 V</source>
        <translation>%1 V</translation>
    </message>
    <message>
        <source>%1 dB</source>
        <translation>%1 dB</translation>
    </message>
    <message>
        <source>Type of device</source>
        <translation>Art des Prüflings</translation>
    </message>
    <message>
        <source>The curve used for the results</source>
        <translation>Die Kurve für die Ergebnisse</translation>
    </message>
    <message>
        <source>Resistance of the fixture&apos;s source and load (same value for both)</source>
        <translation>Widerstand von Quelle und Last der Fassung (gleicher Wert für beide)</translation>
    </message>
    <message>
        <source>Move M1 to the highest point</source>
        <translation>Setzt M1 auf den höchsten Punkt</translation>
    </message>
    <message>
        <source>Move M1 to the lowest point</source>
        <translation>Setzt M1 auf den tiefsten Punkt</translation>
    </message>
    <message>
        <source>Move M1 to the next peak on the left</source>
        <translation>Setzt M1 auf die nächste Spitze links</translation>
    </message>
    <message>
        <source>Move M1 to the next peak on the right</source>
        <translation>Setzt M1 auf die nächste Spitze rechts</translation>
    </message>
    <message>
        <source>Move M1 and M2 to the −3 dB points</source>
        <translation>Setzt M1 und M2 auf die −3-dB-Punkte</translation>
    </message>
    <message>
        <source>Move M1 and M2 to the −6 dB points</source>
        <translation>Setzt M1 und M2 auf die −6-dB-Punkte</translation>
    </message>
    <message>
        <source>Move M1 to the highest point after each sweep</source>
        <translation>Setzt M1 nach jedem Durchlauf auf den höchsten Punkt</translation>
    </message>
</context>
<context>
    <name>calvorn::SampleConversion</name>
    <message>
        <source>sample %1 of a sweep</source>
        <translation>Messpunkt %1 eines Durchlaufs</translation>
    </message>
</context>
<context>
    <name>calvorn::ScaleControl</name>
    <message>
        <source>&amp;Linear</source>
        <translation>&amp;Linear</translation>
    </message>
    <message>
        <source>Volts</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Logarithmic (&amp;1V)</source>
        <translation>Logarithmisch (&amp;1V)</translation>
    </message>
    <message>
        <source>dB referred to 1 V, from 0 dB</source>
        <translation>dB bezogen auf 1 V, ab 0 dB</translation>
    </message>
    <message>
        <source>L&amp;ogarithmic (1V + 10dB)</source>
        <translation>L&amp;ogarithmisch (1V + 10dB)</translation>
    </message>
    <message>
        <source>dB referred to 1 V, from +10 dB</source>
        <translation>dB bezogen auf 1 V, ab +10 dB</translation>
    </message>
    <message>
        <source>Lo&amp;garithmic (10V)</source>
        <translation>Lo&amp;garithmisch (10V)</translation>
    </message>
    <message>
        <source>dB referred to 10 V, from 0 dB</source>
        <translation>dB bezogen auf 10 V, ab 0 dB</translation>
    </message>
    <message>
        <source>Log&amp;arithmic (10V +10dB)</source>
        <translation>Log&amp;arithmisch (10V + 10dB)</translation>
    </message>
    <message>
        <source>dB referred to 10 V, from +10 dB</source>
        <translation>dB bezogen auf 10 V, ab +10 dB</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
</context>
<context>
    <name>calvorn::ScpiServer</name>
    <message>
        <source>Remote control cannot use the port %1 (%2).</source>
        <translation>Die Fernsteuerung kann den Port %1 nicht benutzen (%2).</translation>
    </message>
    <message>
        <source>port %1</source>
        <translation>Port %1</translation>
    </message>
    <message>
        <source>the Unix socket</source>
        <translation>dem Unix-Socket</translation>
    </message>
    <message>
        <source>Remote control could not create its Unix socket (%1).</source>
        <translation>Die Fernsteuerung konnte ihren Unix-Socket nicht anlegen (%1).</translation>
    </message>
    <message>
        <source>Remote control: rejected the user %1 at %2.</source>
        <translation>Fernsteuerung: Der Benutzer %1 (%2) wurde abgewiesen.</translation>
    </message>
    <message>
        <source>Remote control: rejected an unknown user at %1.</source>
        <translation>Fernsteuerung: Ein unbekannter Benutzer (%1) wurde abgewiesen.</translation>
    </message>
    <message>
        <source>Remote control: rejected a client, because %1 are already connected.</source>
        <translation>Fernsteuerung: Client abgewiesen, da bereits %1 verbunden sind.</translation>
    </message>
    <message>
        <source>Remote control: disconnected the client at %1, which does not read its responses.</source>
        <translation>Fernsteuerung: Der Client %1 liest seine Antworten nicht und wurde getrennt.</translation>
    </message>
</context>
<context>
    <name>calvorn::SerialDriver</name>
    <message>
        <source>The serial port is not open.</source>
        <translation>Der serielle Port ist nicht geöffnet.</translation>
    </message>
</context>
<context>
    <name>calvorn::SerialLink</name>
    <message>
        <source>The connection to %1 was lost.</source>
        <translation>Die Verbindung zu %1 ist abgerissen.</translation>
    </message>
    <message>
        <source>The port %1 does not support these line settings.</source>
        <translation>Der Port %1 unterstützt diese Leitungsparameter nicht.</translation>
    </message>
</context>
<context>
    <name>calvorn::ServerProcess</name>
    <message>
        <source>no connection to it (%1)</source>
        <translation>keine Verbindung zu ihm (%1)</translation>
    </message>
    <message>
        <source>%1 could not be started (%2)</source>
        <translation>%1 ließ sich nicht starten (%2)</translation>
    </message>
    <message>
        <source>it has ended</source>
        <translation>er hat sich beendet</translation>
    </message>
</context>
<context>
    <name>calvorn::SetUpMenu</name>
    <message>
        <source>&amp;Configuration</source>
        <translation>&amp;Konfiguration</translation>
    </message>
    <message>
        <source>Interface, chips, outputs and ports</source>
        <translation>Schnittstelle, Bausteine, Ausgänge und Ports</translation>
    </message>
    <message>
        <source>Calibrate &amp;generator</source>
        <translation>&amp;Generator kalibrieren</translation>
    </message>
    <message>
        <source>Calibrate &amp;detector</source>
        <translation>&amp;Detektor kalibrieren</translation>
    </message>
    <message>
        <source>Calibrate &amp;level</source>
        <translation>&amp;Pegel kalibrieren</translation>
    </message>
    <message>
        <source>Adjust the frequency with a frequency meter</source>
        <translation>Frequenz nach einem Zähler abgleichen</translation>
    </message>
    <message>
        <source>Adjust the detector with a known voltage</source>
        <translation>Detektor mit einer bekannten Spannung abgleichen</translation>
    </message>
    <message>
        <source>Determine the detector&apos;s law from known levels</source>
        <translation>Kennlinie des Detektors mit bekannten Pegeln bestimmen</translation>
    </message>
</context>
<context>
    <name>calvorn::SignalGenerator</name>
    <message>
        <source>A sweep is running: stop it first.</source>
        <translation>Ein Durchlauf läuft: zuerst anhalten.</translation>
    </message>
    <message>
        <source>The hardware is not connected.</source>
        <translation>Die Hardware ist nicht verbunden.</translation>
    </message>
    <message>
        <source>The board did not accept the frequency.</source>
        <translation>Die Platine hat die Frequenz nicht angenommen.</translation>
    </message>
</context>
<context>
    <name>calvorn::SpanCommands</name>
    <message>
        <source>&amp;Centre and span…</source>
        <translation>&amp;Mitte und Spanne…</translation>
    </message>
    <message>
        <source>Enter the range as centre and span</source>
        <translation>Bereich als Mitte und Spanne eingeben</translation>
    </message>
    <message>
        <source>&amp;Previous span</source>
        <translation>&amp;Vorheriger Bereich</translation>
    </message>
    <message>
        <source>&amp;Next span</source>
        <translation>&amp;Nächster Bereich</translation>
    </message>
    <message>
        <source>&amp;Full range</source>
        <translation>&amp;Ganzer Bereich</translation>
    </message>
    <message>
        <source>Return to the previous range</source>
        <translation>Zurück zum vorigen Bereich</translation>
    </message>
    <message>
        <source>Go to the next range</source>
        <translation>Weiter zum nächsten Bereich</translation>
    </message>
    <message>
        <source>Sweep the generator&apos;s full range</source>
        <translation>Ganzen Bereich des Generators wobbeln</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepControls</name>
    <message>
        <source>Sweep speed</source>
        <translation>Wobbelgeschwindigkeit</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Slow</source>
        <translation>Langsam</translation>
    </message>
    <message>
        <source>Very slow</source>
        <translation>Sehr langsam</translation>
    </message>
    <message>
        <source>Fastest sweep</source>
        <translation>Schnellster Durchlauf</translation>
    </message>
    <message>
        <source>More settling time at each frequency</source>
        <translation>Mehr Einschwingzeit bei jeder Frequenz</translation>
    </message>
    <message>
        <source>Longest settling time, for very sharp filters</source>
        <translation>Längste Einschwingzeit, für sehr schmale Filter</translation>
    </message>
    <message>
        <source>Time of one sweep in milliseconds</source>
        <translation>Dauer eines Durchlaufs in Millisekunden</translation>
    </message>
    <message>
        <source>Sweeps per second</source>
        <translation>Durchläufe/s</translation>
    </message>
    <message>
        <source>Sweep time - ms</source>
        <translation>Wobbelzeit - ms</translation>
    </message>
    <message>
        <source>Sweep ON</source>
        <translation>Wobbeln EIN</translation>
    </message>
    <message>
        <source>Start sweeping (F5)</source>
        <translation>Wobbeln starten (F5)</translation>
    </message>
    <message>
        <source>Sweep OFF</source>
        <translation>Wobbeln AUS</translation>
    </message>
    <message>
        <source>Stop the sweep (F5)</source>
        <translation>Wobbeln stoppen (F5)</translation>
    </message>
    <message>
        <source>The minimum sweep range is </source>
        <translation>Der kleinste Wobbelbereich ist </translation>
    </message>
    <message>
        <source>Stop sweep forzato</source>
        <translation>Wobbeln zwangsweise gestoppt</translation>
    </message>
    <message>
        <source>&amp;Single sweep</source>
        <translation>&amp;Einzeldurchlauf</translation>
    </message>
    <message>
        <source>Sweep once, then stop; repeated sweeps stop after the next curve</source>
        <translation>Einmal wobbeln, dann anhalten; ein laufendes Wobbeln hält nach der nächsten Kurve an</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepFiles</name>
    <message>
        <source>&amp;Export (.csv)</source>
        <translation>&amp;Exportieren (.csv)</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importieren</translation>
    </message>
    <message>
        <source>Export: </source>
        <translation>Export: </translation>
    </message>
    <message>
        <source>Sweep files (*.csv)</source>
        <translation>Wobbeldateien (*.csv)</translation>
    </message>
    <message>
        <source>Import: </source>
        <translation>Import: </translation>
    </message>
    <message>
        <source>: it is not a file</source>
        <translation>: das ist keine Datei</translation>
    </message>
    <message>
        <source>This file was created with a different ADC step or offset.</source>
        <translation>Diese Datei entstand mit einem anderen ADC-Schritt oder Offset.</translation>
    </message>
    <message>
        <source>Press OK to adjust amplitude to the current configuration,</source>
        <translation>OK passt die Amplituden an die jetzige Konfiguration an,</translation>
    </message>
    <message>
        <source>CANCEL to keep the original values.</source>
        <translation>ABBRECHEN behält die Werte der Datei.</translation>
    </message>
    <message>
        <source>%1 rows written to %2</source>
        <translation>%1 Zeilen in %2 geschrieben</translation>
    </message>
    <message>
        <source>%1 not exported: %2</source>
        <translation>%1 nicht exportiert: %2</translation>
    </message>
    <message>
        <source>%1 not imported: %2</source>
        <translation>%1 nicht importiert: %2</translation>
    </message>
    <message>
        <source>Export the sweep to a file</source>
        <translation>Durchlauf in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Import a sweep from a file</source>
        <translation>Durchlauf aus einer Datei zeigen</translation>
    </message>
    <message>
        <source>%1 rows imported from %2</source>
        <translation>%1 Zeilen aus %2 importiert</translation>
    </message>
    <message>
        <source>the amplitudes are in volts, but the scale is in dB</source>
        <translation>die Amplituden sind in Volt, die Skala aber in dB</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepGraph</name>
    <message>
        <source>Sweep graph</source>
        <translation>Wobbelkurve</translation>
    </message>
    <message>
        <source>Left-click: M1, right-click: M2, with Shift: M3 and M4. Markers can be dragged.
With Ctrl: the wheel zooms, dragging selects the span.
Keyboard: arrow keys move, keys 1 to 4 place a marker.</source>
        <translation>Klick links: M1, rechts: M2, mit Umschalt: M3 und M4. Marker lassen sich ziehen.
Mit Strg: das Rad zoomt, Ziehen wählt den Bereich.
Tastatur: Pfeiltasten bewegen, die Tasten 1 bis 4 setzen einen Marker.</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepPictures</name>
    <message>
        <source>Save pict&amp;ure…</source>
        <translation>Bild &amp;speichern…</translation>
    </message>
    <message>
        <source>&amp;Copy picture</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>&amp;Drucken…</translation>
    </message>
    <message>
        <source>PNG picture (*.png);;SVG drawing (*.svg)</source>
        <translation>PNG-Bild (*.png);;SVG-Zeichnung (*.svg)</translation>
    </message>
    <message>
        <source>sweep</source>
        <translation>sweep</translation>
    </message>
    <message>
        <source>the page cannot be laid out</source>
        <translation>die Seite lässt sich nicht aufbauen</translation>
    </message>
    <message>
        <source>Save the graph with its read-outs as PNG or SVG</source>
        <translation>Kurve mit ihren Anzeigen als PNG oder SVG schreiben</translation>
    </message>
    <message>
        <source>Copy the graph with its read-outs to the clipboard</source>
        <translation>Kurve mit ihren Anzeigen in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Print the graph with its read-outs, or create a PDF file</source>
        <translation>Kurve mit ihren Anzeigen drucken oder eine PDF-Datei erzeugen</translation>
    </message>
    <message>
        <source>the printer did not accept the page</source>
        <translation>der Drucker hat die Seite nicht angenommen</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepTable</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Zählwert</translation>
    </message>
    <message>
        <source>table row %1, column %2</source>
        <translation>Tabellenzeile %1, Spalte %2</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepTableView</name>
    <message>
        <source>The 400 samples of the last sweep</source>
        <translation>Die 400 Messpunkte des letzten Durchlaufs</translation>
    </message>
    <message>
        <source>Sweep table</source>
        <translation>Wobbeltabelle</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Zählwert</translation>
    </message>
</context>
<context>
    <name>calvorn::TestPanel</name>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>Last received sample: number and count</source>
        <translation>Zuletzt empfangener Messpunkt: Nummer und Zählwert</translation>
    </message>
    <message>
        <source>Transmission errors counted</source>
        <translation>Gezählte Übertragungsfehler</translation>
    </message>
    <message>
        <source>RX</source>
        <translation>RX</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>DUT</source>
        <translation>DUT</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>F.dds</source>
        <translation>F.dds</translation>
    </message>
    <message>
        <source>F.Start</source>
        <translation>F.Start</translation>
    </message>
    <message>
        <source>Send the start frequency of the sweep</source>
        <translation>Startfrequenz des Durchlaufs senden</translation>
    </message>
    <message>
        <source>F.Step</source>
        <translation>F.Schr.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>Kurve</translation>
    </message>
    <message>
        <source>Draw a curve of random samples, without hardware</source>
        <translation>Kurve aus Zufallswerten zeichnen, ohne Hardware</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Acquisition log; right-click to copy or save it</source>
        <translation>Protokoll der Messung; Rechtsklick zum Kopieren oder Speichern</translation>
    </message>
    <message>
        <source>Mode of the MiniVNA; click for the next mode</source>
        <translation>Betriebsart des MiniVNA; Klick wählt die nächste</translation>
    </message>
    <message>
        <source>Restore the buttons if the hardware never ends a sweep</source>
        <translation>Knöpfe wiederherstellen, wenn die Hardware einen Durchlauf nie beendet</translation>
    </message>
    <message>
        <source>Set the generator to the start frequency</source>
        <translation>Generator auf die Startfrequenz stellen</translation>
    </message>
    <message>
        <source>Send the step of the sweep (PIC only)</source>
        <translation>Schrittweite des Durchlaufs senden (nur PIC)</translation>
    </message>
    <message>
        <source>Reset the generator and set it to 1 MHz</source>
        <translation>Generator zurücksetzen und auf 1 MHz stellen</translation>
    </message>
    <message>
        <source>Clear the receive box, the curve and the table</source>
        <translation>Empfangsfeld, Kurve und Tabelle leeren</translation>
    </message>
</context>
<context>
    <name>calvorn::TracesPage</name>
    <message>
        <source>&amp;Legend in the graph</source>
        <translation>&amp;Legende im Graphen</translation>
    </message>
    <message>
        <source>Stored traces</source>
        <translation>Gespeicherte Kurven</translation>
    </message>
    <message>
        <source>Show this trace in the graph</source>
        <translation>Zeigt diese Kurve im Graphen</translation>
    </message>
    <message>
        <source>Show trace %1</source>
        <translation>Kurve %1 zeigen</translation>
    </message>
    <message>
        <source>Name of the trace in the legend</source>
        <translation>Name der Kurve in der Legende</translation>
    </message>
    <message>
        <source>Name of trace %1</source>
        <translation>Name der Kurve %1</translation>
    </message>
    <message>
        <source>Store %1</source>
        <translation>Speicher %1</translation>
    </message>
    <message>
        <source>Load, save or remove trace %1</source>
        <translation>Kurve %1 laden, speichern oder entfernen</translation>
    </message>
    <message>
        <source>&amp;Load…</source>
        <translation>&amp;Laden…</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Ma&amp;x hold</source>
        <translation>Ma&amp;ximum</translation>
    </message>
    <message>
        <source>Keep the highest amplitude at each frequency</source>
        <translation>Behält die höchste Amplitude jeder Frequenz</translation>
    </message>
    <message>
        <source>M&amp;in hold</source>
        <translation>M&amp;inimum</translation>
    </message>
    <message>
        <source>Keep the lowest amplitude at each frequency</source>
        <translation>Behält die niedrigste Amplitude jeder Frequenz</translation>
    </message>
    <message>
        <source>&amp;Average over</source>
        <translation>Mittel ü&amp;ber</translation>
    </message>
    <message>
        <source>Sweeps in the average</source>
        <translation>Durchläufe im Mittel</translation>
    </message>
    <message>
        <source>Sweeps averaged so far</source>
        <translation>Bisher gemittelte Durchläufe</translation>
    </message>
    <message>
        <source>Trace %1</source>
        <translation>Kurve %1</translation>
    </message>
    <message>
        <source>Sweep files (*.csv)</source>
        <translation>Wobbeldateien (*.csv)</translation>
    </message>
    <message>
        <source>%1 so far</source>
        <translation>%1 bisher</translation>
    </message>
    <message>
        <source>Label the curves if more than one is shown</source>
        <translation>Benennt die Kurven, wenn mehr als eine gezeigt wird</translation>
    </message>
    <message>
        <source>Store the current sweep as trace %1</source>
        <translation>Aktuellen Durchlauf als Kurve %1 speichern</translation>
    </message>
    <message>
        <source>Following sweeps</source>
        <translation>Folgende Durchläufe</translation>
    </message>
    <message>
        <source>The mean of this many sweeps, then an exponential running mean</source>
        <translation>Das Mittel so vieler Durchläufe, danach ein exponentiell gleitendes Mittel</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>Neu be&amp;ginnen</translation>
    </message>
    <message>
        <source>Restart holds and average with the next sweep, as a new range does</source>
        <translation>Maximum, Minimum und Mittel beginnen mit dem nächsten Durchlauf neu, wie bei einem neuen Bereich</translation>
    </message>
    <message>
        <source>Sweep files (*.csv);;All files (*)</source>
        <translation>Wobbeldateien (*.csv);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::ViewSwitch</name>
    <message>
        <source>&amp;Marker</source>
        <translation>&amp;Marker</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>Aux &amp;1</source>
        <translation>Aux &amp;1</translation>
    </message>
    <message>
        <source>Aux &amp;2</source>
        <translation>Aux &amp;2</translation>
    </message>
    <message>
        <source>Show the view &quot;%1&quot;</source>
        <translation>Ansicht „%1“ zeigen</translation>
    </message>
    <message>
        <source>View %1</source>
        <translation>Ansicht %1</translation>
    </message>
</context>
<context>
    <name>calvorn::VnaDriver</name>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>RetLoss</source>
        <translation>RetLoss</translation>
    </message>
    <message>
        <source>DUT</source>
        <translation>DUT</translation>
    </message>
    <message>
        <source>Unknown measurement mode: %1</source>
        <translation>Unbekannte Messart: %1</translation>
    </message>
    <message>
        <source>A sweep has 400 samples, not %1.</source>
        <translation>Ein Durchlauf hat 400 Messpunkte, nicht %1.</translation>
    </message>
    <message>
        <source>The MiniVNA does not answer.</source>
        <translation>Das MiniVNA antwortet nicht.</translation>
    </message>
    <message>
        <source>A sweep of the MiniVNA was damaged or incomplete.</source>
        <translation>Ein Durchlauf des MiniVNA war beschädigt oder unvollständig.</translation>
    </message>
    <message>
        <source>The MiniVNA failed to deliver three sweeps in a row; the sweep ends.</source>
        <translation>Das MiniVNA blieb drei Durchläufe nacheinander schuldig; das Wobbeln endet.</translation>
    </message>
    <message>
        <source>The MiniVNA is designed for 0.1 to 180 MHz; the frequency is set as requested.</source>
        <translation>Das MiniVNA ist für 0,1 bis 180 MHz gebaut; die Frequenz wird wie gewünscht gesetzt.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>The program is already running</source>
        <translation>Das Programm läuft bereits</translation>
    </message>
    <message>
        <source>Measures filters, antennas and other devices over a range of frequencies.</source>
        <translation>Misst Filter, Antennen und andere Objekte über einen Frequenzbereich.</translation>
    </message>
    <message>
        <source>Calvorn needs a display, but cannot open one. Start it on a desktop, or use calvorn-sweep.</source>
        <translation>Calvorn braucht einen Bildschirm, und keiner lässt sich öffnen. Auf einem Desktop starten oder calvorn-sweep verwenden.</translation>
    </message>
    <message>
        <source>The settings folder %1 could not be created</source>
        <translation>Der Ordner %1 für die Einstellungen konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>Calvorn opens no files: %1</source>
        <translation>Calvorn öffnet keine Dateien: %1</translation>
    </message>
</context>
</TS>
