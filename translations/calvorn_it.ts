<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
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
        <translation>non è un file</translation>
    </message>
    <message>
        <source>it is larger than %1 MB</source>
        <translation>supera i %1 MB</translation>
    </message>
    <message>
        <source>it changed while being read</source>
        <translation>è cambiato durante la lettura</translation>
    </message>
</context>
<context>
    <name>ChipLimits</name>
    <message>
        <source>The system clock must be at least %1 Hz.</source>
        <translation>Il clock di sistema deve essere di almeno %1 Hz.</translation>
    </message>
    <message>
        <source>The %1 cannot multiply its clock by %2.</source>
        <translation>L&apos;%1 non può moltiplicare il suo clock per %2.</translation>
    </message>
    <message>
        <source>Above %1 Hz the output is weak or impure.</source>
        <translation>Oltre %1 Hz il segnale è debole o impuro.</translation>
    </message>
    <message>
        <source>Clock and maximum frequency are within the limits of the %1.</source>
        <translation>Clock e frequenza massima rientrano nei limiti dell&apos;%1.</translation>
    </message>
    <message>
        <source>The system clock of the %1 must not exceed %2 Hz.</source>
        <translation>Il clock di sistema dell&apos;%1 non deve superare %2 Hz.</translation>
    </message>
    <message>
        <source>With the multiplier, the reference clock of the %1 must not exceed %2 Hz.</source>
        <translation>Con il moltiplicatore, il clock di riferimento dell&apos;%1 non deve superare %2 Hz.</translation>
    </message>
    <message>
        <source>The maximum frequency is above half the system clock: the generator would output its image.</source>
        <translation>La frequenza massima supera metà del clock di sistema: il generatore ne produrrebbe l&apos;immagine.</translation>
    </message>
</context>
<context>
    <name>CsvFields</name>
    <message>
        <source>a field is too long</source>
        <translation>un campo è troppo lungo</translation>
    </message>
    <message>
        <source>the file ends unexpectedly</source>
        <translation>il file finisce in modo inatteso</translation>
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
        <translation>non è un file</translation>
    </message>
</context>
<context>
    <name>Frequency</name>
    <message>
        <source>The reference clock of the generator must be at least 1 Hz.</source>
        <translation>Il clock di riferimento del generatore deve essere di almeno 1 Hz.</translation>
    </message>
    <message>
        <source>The frequency %1 Hz cannot be generated with a system clock of %2 Hz.</source>
        <translation>La frequenza di %1 Hz non si può generare con un clock di sistema di %2 Hz.</translation>
    </message>
    <message>
        <source>The sweep up to %1 Hz cannot be generated with a system clock of %2 Hz.</source>
        <translation>Lo sweep fino a %1 Hz non si può generare con un clock di sistema di %2 Hz.</translation>
    </message>
    <message>
        <source>the AD9850 has no multiplier; the value must be 1</source>
        <translation>l&apos;AD9850 non ha moltiplicatore: il valore deve essere 1</translation>
    </message>
    <message>
        <source>for an AD9851, the value must be 1 or 6</source>
        <translation>per l&apos;AD9851 il valore deve essere 1 o 6</translation>
    </message>
    <message>
        <source>for an AD9951, the value must be 1 or 4 to 20</source>
        <translation>per l&apos;AD9951 il valore deve essere 1 o da 4 a 20</translation>
    </message>
    <message>
        <source>%1 Hz is above half the generator&apos;s clock: the output is its image.</source>
        <translation>%1 Hz supera metà del clock del generatore: in uscita c&apos;è l&apos;immagine.</translation>
    </message>
    <message>
        <source>%1 Hz is above the generator&apos;s useful maximum of %2 Hz.</source>
        <translation>%1 Hz supera il massimo utile del generatore (%2 Hz).</translation>
    </message>
</context>
<context>
    <name>FrequencyPlan</name>
    <message>
        <source>Start frequency will be set to </source>
        <translation>La frequenza iniziale diventa </translation>
    </message>
    <message>
        <source>Stop frequency will be set to </source>
        <translation>La frequenza finale diventa </translation>
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
        <translation>PIC collegato alla porta USB COM%1</translation>
    </message>
    <message>
        <source>(Project by Brenik)</source>
        <translation>(Progetto di Brenik)</translation>
    </message>
    <message>
        <source>DDS Generator/Detector connected to the parallel port LPT 0%1</source>
        <translation>Generatore/rivelatore DDS collegato alla porta parallela LPT 0%1</translation>
    </message>
    <message>
        <source>In the manual (F1): &quot;The parallel-port board&quot;</source>
        <translation>Nel manuale (F1): &quot;The parallel-port board&quot;</translation>
    </message>
    <message>
        <source>MiniVNA connected to the USB port COM%1</source>
        <translation>MiniVNA collegato alla porta USB COM%1</translation>
    </message>
    <message>
        <source>In the manual (F1): &quot;The MiniVNA&quot;</source>
        <translation>Nel manuale (F1): &quot;The MiniVNA&quot;</translation>
    </message>
    <message>
        <source>by PIC 16F877, step: </source>
        <translation> del PIC 16F877, passo: </translation>
    </message>
    <message>
        <source>, step: </source>
        <translation>, passo: </translation>
    </message>
    <message>
        <source>parallel port %1</source>
        <translation>porta parallela %1</translation>
    </message>
    <message>
        <source>serial port COM%1</source>
        <translation>porta seriale COM%1</translation>
    </message>
    <message>
        <source>Board design: built by radio amateurs</source>
        <translation>Progetto della scheda: autocostruita da radioamatori</translation>
    </message>
    <message>
        <source>Analyser design: thanks to its developers</source>
        <translation>Progetto dell&apos;analizzatore: grazie ai suoi autori</translation>
    </message>
</context>
<context>
    <name>LimitLines</name>
    <message>
        <source>line %1: %2</source>
        <translation>riga %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number with a decimal point</source>
        <translation>&quot;%1&quot; non è un numero con il punto decimale</translation>
    </message>
    <message>
        <source>three fields are needed: frequency, upper, lower</source>
        <translation>servono tre campi: frequenza, limite superiore, limite inferiore</translation>
    </message>
    <message>
        <source>there are more than %1 points</source>
        <translation>ci sono più di %1 punti</translation>
    </message>
    <message>
        <source>the frequency is negative</source>
        <translation>la frequenza è negativa</translation>
    </message>
    <message>
        <source>the first line must be &quot;%1&quot;, or the same with V or &quot;dB relative&quot; instead of dB</source>
        <translation>la prima riga deve essere &quot;%1&quot;, oppure con V o &quot;dB relative&quot; al posto di dB</translation>
    </message>
    <message>
        <source>the file is too large for a limit file</source>
        <translation>il file è troppo grande per un file di limiti</translation>
    </message>
</context>
<context>
    <name>LptWiring</name>
    <message>
        <source>this line must be connected.</source>
        <translation>questa linea deve essere collegata.</translation>
    </message>
    <message>
        <source>there is no pin &quot;%1&quot;.</source>
        <translation>il pin &quot;%1&quot; non esiste.</translation>
    </message>
    <message>
        <source>%1 is an input of the port.</source>
        <translation>%1 è un ingresso della porta.</translation>
    </message>
    <message>
        <source>%1 is an output of the port.</source>
        <translation>%1 è un&apos;uscita della porta.</translation>
    </message>
    <message>
        <source>unknown line.</source>
        <translation>linea sconosciuta.</translation>
    </message>
    <message>
        <source>D0 to D7 are used for the generator&apos;s bytes.</source>
        <translation>D0...D7 servono per i byte del generatore.</translation>
    </message>
    <message>
        <source>the pin is already used by %1.</source>
        <translation>il pin è già usato da %1.</translation>
    </message>
    <message>
        <source>must be &quot;serial&quot; or &quot;byte&quot;, not &quot;%1&quot;.</source>
        <translation>deve essere &quot;serial&quot; o &quot;byte&quot;, non &quot;%1&quot;.</translation>
    </message>
</context>
<context>
    <name>ParallelPort</name>
    <message>
        <source>The parallel port is not open.</source>
        <translation>La porta parallela non è aperta.</translation>
    </message>
    <message>
        <source> A USB printer cable is not a parallel port.</source>
        <translation> Un cavo USB per stampante non è una porta parallela.</translation>
    </message>
    <message>
        <source>This computer has: %1.</source>
        <translation>Questo computer ha: %1.</translation>
    </message>
    <message>
        <source>There is no parallel port at the address %1. %2%3</source>
        <translation>All&apos;indirizzo %1 non c&apos;è una porta parallela. %2%3</translation>
    </message>
    <message>
        <source>%1 is not a parallel port: %2.</source>
        <translation>%1 non è una porta parallela: %2.</translation>
    </message>
    <message>
        <source>The parallel port %1 refused an access: %2.</source>
        <translation>La porta parallela %1 ha rifiutato un accesso: %2.</translation>
    </message>
    <message>
        <source>%1 cannot be opened: %2.</source>
        <translation>%1 non si può aprire: %2.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>%1 non si può usare: %2.</translation>
    </message>
    <message>
        <source>%1 is in use by another program.</source>
        <translation>%1 è usata da un altro programma.</translation>
    </message>
    <message>
        <source>The simulated parallel port is set to refuse.</source>
        <translation>La porta parallela simulata è impostata per rifiutare.</translation>
    </message>
    <message>
        <source>The parallel port has disappeared.</source>
        <translation>La porta parallela è scomparsa.</translation>
    </message>
    <message>
        <source>The driver has found none in this computer.</source>
        <translation>Il driver non ne ha trovata nessuna in questo computer.</translation>
    </message>
    <message>
        <source>No parallel-port driver is loaded: an administrator must run &quot;modprobe -a parport_pc ppdev&quot;.%1</source>
        <translation>Nessun driver per porte parallele è caricato: un amministratore deve eseguire &quot;modprobe -a parport_pc ppdev&quot;.%1</translation>
    </message>
    <message>
        <source>The parallel port %1 has disappeared.</source>
        <translation>La porta parallela %1 è scomparsa.</translation>
    </message>
    <message>
        <source>The parallel port %1 does not support setting its lines individually.</source>
        <translation>La porta parallela %1 non permette di comandare le linee una a una.</translation>
    </message>
    <message>
        <source>The data lines of %1 cannot be used as outputs: %2.</source>
        <translation>Le linee dati di %1 non si possono usare come uscite: %2.</translation>
    </message>
    <message>
        <source>%1 does not exist: an administrator must run &quot;modprobe ppdev&quot;.</source>
        <translation>%1 non esiste: un amministratore deve eseguire &quot;modprobe ppdev&quot;.</translation>
    </message>
    <message>
        <source>You have no permission to use %1: an administrator must add you to the group &quot;lp&quot;; then log in again.</source>
        <translation>Non avete il permesso di usare %1: un amministratore deve aggiungervi al gruppo &quot;lp&quot;, poi rientrate nella sessione.</translation>
    </message>
    <message>
        <source>%1 is in use by the printer driver (lp): stop the printer service, or ask an administrator to run &quot;rmmod lp&quot;.</source>
        <translation>%1 è usata dal driver della stampante (lp): fermare il servizio di stampa, oppure un amministratore deve eseguire &quot;rmmod lp&quot;.</translation>
    </message>
</context>
<context>
    <name>PicBoard</name>
    <message>
        <source>The board has an %1 with a clock of %2 Hz; the settings specify %3, %4 Hz.</source>
        <translation>La scheda ha un %1 con un clock di %2 Hz; le impostazioni indicano %3, %4 Hz.</translation>
    </message>
</context>
<context>
    <name>PinUses</name>
    <message>
        <source>DDS clock</source>
        <translation>Clock DDS</translation>
    </message>
    <message>
        <source>DDS update</source>
        <translation>Update DDS</translation>
    </message>
    <message>
        <source>DDS data</source>
        <translation>Dati DDS</translation>
    </message>
    <message>
        <source>DDS reset</source>
        <translation>Reset DDS</translation>
    </message>
    <message>
        <source>ADC clock</source>
        <translation>Clock ADC</translation>
    </message>
    <message>
        <source>ADC select</source>
        <translation>Select ADC</translation>
    </message>
    <message>
        <source>I2C clock</source>
        <translation>Clock I2C</translation>
    </message>
    <message>
        <source>I2C data</source>
        <translation>Dati I2C</translation>
    </message>
    <message>
        <source>Aux data</source>
        <translation>Dati aux</translation>
    </message>
    <message>
        <source>Aux clock</source>
        <translation>Clock aux</translation>
    </message>
    <message>
        <source>Aux latch</source>
        <translation>Latch aux</translation>
    </message>
    <message>
        <source>ADC data</source>
        <translation>Dati ADC</translation>
    </message>
    <message>
        <source>I2C data back</source>
        <translation>Ritorno I2C</translation>
    </message>
    <message>
        <source>Ground</source>
        <translation>Massa</translation>
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
        <translation>non esiste</translation>
    </message>
    <message>
        <source>it is not UTF-8 text</source>
        <translation>non è un testo in UTF-8</translation>
    </message>
    <message>
        <source>its line endings are not supported (CR only)</source>
        <translation>i suoi fine riga non sono supportati (solo CR)</translation>
    </message>
    <message>
        <source>it contains no settings</source>
        <translation>non contiene impostazioni</translation>
    </message>
</context>
<context>
    <name>ProgramLock</name>
    <message>
        <source>It is process %1 of user %2.</source>
        <translation>È il processo %1 dell&apos;utente %2.</translation>
    </message>
</context>
<context>
    <name>ReadableFile</name>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>Impossibile leggere %1: %2.</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>non è un file</translation>
    </message>
</context>
<context>
    <name>ResultText</name>
    <message>
        <source>Peak</source>
        <translation>Massimo</translation>
    </message>
    <message>
        <source>Peak frequency</source>
        <translation>Frequenza del massimo</translation>
    </message>
    <message>
        <source>Insertion loss</source>
        <translation>Perdita d&apos;inserzione</translation>
    </message>
    <message>
        <source>−3 dB bandwidth</source>
        <translation>Banda a −3 dB</translation>
    </message>
    <message>
        <source>−6 dB bandwidth</source>
        <translation>Banda a −6 dB</translation>
    </message>
    <message>
        <source>−60 dB bandwidth</source>
        <translation>Banda a −60 dB</translation>
    </message>
    <message>
        <source>Centre frequency</source>
        <translation>Frequenza centrale</translation>
    </message>
    <message>
        <source>Quality factor Q</source>
        <translation>Fattore di merito Q</translation>
    </message>
    <message>
        <source>Shape factor</source>
        <translation>Fattore di forma</translation>
    </message>
    <message>
        <source>Ripple</source>
        <translation>Ondulazione</translation>
    </message>
    <message>
        <source>Lower slope</source>
        <translation>Pendenza inferiore</translation>
    </message>
    <message>
        <source>Upper slope</source>
        <translation>Pendenza superiore</translation>
    </message>
    <message>
        <source>Notch depth</source>
        <translation>Profondità della tacca</translation>
    </message>
    <message>
        <source>Notch frequency</source>
        <translation>Frequenza della tacca</translation>
    </message>
    <message>
        <source>Series resonance</source>
        <translation>Risonanza serie</translation>
    </message>
    <message>
        <source>Parallel resonance</source>
        <translation>Risonanza parallelo</translation>
    </message>
    <message>
        <source>Motional resistance Rm</source>
        <translation>Resistenza Rm</translation>
    </message>
    <message>
        <source>Motional inductance Lm</source>
        <translation>Induttanza Lm</translation>
    </message>
    <message>
        <source>Motional capacitance Cm</source>
        <translation>Capacità Cm</translation>
    </message>
    <message>
        <source>Parallel capacitance C0</source>
        <translation>Capacità in parallelo C0</translation>
    </message>
    <message>
        <source>Return loss</source>
        <translation>Perdita di ritorno</translation>
    </message>
    <message>
        <source>Reflection |ρ|</source>
        <translation>Riflessione |ρ|</translation>
    </message>
    <message>
        <source>Lowest SWR</source>
        <translation>ROS minimo</translation>
    </message>
    <message>
        <source>Frequency of the lowest SWR</source>
        <translation>Alla frequenza</translation>
    </message>
    <message>
        <source>Bandwidth for SWR ≤ 1.5</source>
        <translation>Banda, ROS ≤ 1,5</translation>
    </message>
    <message>
        <source>Bandwidth for SWR ≤ 2</source>
        <translation>Banda, ROS ≤ 2</translation>
    </message>
    <message>
        <source>%1 dB/octave</source>
        <translation>%1 dB/ott.</translation>
    </message>
    <message>
        <source>no sweep yet</source>
        <translation>ancora nessuno sweep</translation>
    </message>
    <message>
        <source>below the detector&apos;s floor</source>
        <translation>sotto la soglia del rivelatore</translation>
    </message>
    <message>
        <source>no reference</source>
        <translation>nessun riferimento</translation>
    </message>
    <message>
        <source>no parallel resonance inside the range</source>
        <translation>nessuna risonanza parallelo nell&apos;intervallo</translation>
    </message>
    <message>
        <source>a gap in the curve</source>
        <translation>una lacuna nella curva</translation>
    </message>
    <message>
        <source>not below the reference</source>
        <translation>non sotto il riferimento</translation>
    </message>
    <message>
        <source>outside the sweep range</source>
        <translation>fuori dall&apos;intervallo di sweep</translation>
    </message>
    <message>
        <source>the curve does not reach this level</source>
        <translation>la curva non raggiunge questo livello</translation>
    </message>
</context>
<context>
    <name>RuntimeError</name>
    <message>
        <source>Overflow</source>
        <translation>Overflow</translation>
    </message>
    <message>
        <source>Type mismatch</source>
        <translation>Tipo non corrispondente</translation>
    </message>
    <message>
        <source>Subscript out of range</source>
        <translation>Indice fuori intervallo</translation>
    </message>
    <message>
        <source>File error</source>
        <translation>Errore di file</translation>
    </message>
    <message>
        <source>The acquisition server did not carry out a command</source>
        <translation>Il server di acquisizione non ha eseguito un comando</translation>
    </message>
    <message>
        <source>There is no driver for this interface</source>
        <translation>Per questa interfaccia non c&apos;è un driver</translation>
    </message>
</context>
<context>
    <name>SerialPort</name>
    <message>
        <source>There is no serial port COM%1.</source>
        <translation>La porta seriale COM%1 non esiste.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not describe a serial line; it should look like 115200,N,8,1.</source>
        <translation>&quot;%1&quot; non descrive una linea seriale; il formato è 115200,N,8,1.</translation>
    </message>
    <message>
        <source>There is no device %1; is the cable plugged in?</source>
        <translation>Il dispositivo %1 non esiste; il cavo è collegato?</translation>
    </message>
    <message>
        <source>The port %1 is in use by another program.</source>
        <translation>La porta %1 è usata da un altro programma.</translation>
    </message>
    <message>
        <source>%1 is not a serial port.</source>
        <translation>%1 non è una porta seriale.</translation>
    </message>
    <message>
        <source>The system has no pseudo-terminal for the simulated board.</source>
        <translation>Il sistema non ha uno pseudo-terminale per la scheda simulata.</translation>
    </message>
    <message>
        <source>You have no permission to use %1; add your user to the group dialout and log in again.</source>
        <translation>Manca il permesso di usare %1; aggiungere l&apos;utente al gruppo dialout e rientrare nella sessione.</translation>
    </message>
</context>
<context>
    <name>SetUp</name>
    <message>
        <source>Unknown device &quot;%1&quot;</source>
        <translation>Dispositivo &quot;%1&quot; sconosciuto</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>[%1] &quot;%2&quot;: %3 The default %4 is used.</source>
        <translation>[%1] &quot;%2&quot;: %3 Si usa il valore predefinito %4.</translation>
    </message>
    <message>
        <source>[%1] &quot;%2&quot;: %3 No port is opened.</source>
        <translation>[%1] &quot;%2&quot;: %3 Non viene aperta nessuna porta.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not &quot;volts;dBm&quot;.</source>
        <translation>&quot;%1&quot; non è &quot;volt;dBm&quot;.</translation>
    </message>
    <message>
        <source>A table needs at least two points.</source>
        <translation>Una tabella richiede almeno due punti.</translation>
    </message>
    <message>
        <source>[%1] &quot;%2&quot;: %3 The detector is treated as linear.</source>
        <translation>[%1] &quot;%2&quot;: %3 Il rivelatore è considerato lineare.</translation>
    </message>
    <message>
        <source>This point is missing, but later points exist.</source>
        <translation>Questo punto manca, ma esistono punti successivi.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid slope.</source>
        <translation>&quot;%1&quot; non è una pendenza valida.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid level.</source>
        <translation>&quot;%1&quot; non è un livello valido.</translation>
    </message>
    <message>
        <source>The level must rise or fall steadily with the voltage.</source>
        <translation>Il livello deve salire o scendere in modo costante con la tensione.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a known law.</source>
        <translation>&quot;%1&quot; non è una legge nota.</translation>
    </message>
    <message>
        <source>the law could not be written to %1</source>
        <translation>non è stato possibile scrivere la legge in %1</translation>
    </message>
</context>
<context>
    <name>SingleSweep</name>
    <message>
        <source>%1 must lie between %2 and %3 Hz.</source>
        <translation>%1 deve stare fra %2 e %3 Hz.</translation>
    </message>
    <message>
        <source>The %1 could not be opened.</source>
        <translation>Non è stato possibile aprire la %1.</translation>
    </message>
    <message>
        <source>The %1 could not be opened (%2).</source>
        <translation>Non è stato possibile aprire la %1 (%2).</translation>
    </message>
    <message>
        <source>Sweeping from %1 to %2 Hz</source>
        <translation>Sweep da %1 a %2 Hz</translation>
    </message>
    <message>
        <source>The hardware refused the sweep.</source>
        <translation>L&apos;hardware ha rifiutato lo sweep.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Interrotto.</translation>
    </message>
    <message>
        <source>Sweep %1 of %2</source>
        <translation>Sweep %1 di %2</translation>
    </message>
    <message>
        <source>The settings file %1 cannot be read: %2.</source>
        <translation>Non è possibile leggere il file delle impostazioni %1: %2.</translation>
    </message>
    <message>
        <source>%1 specifies an unsupported device.</source>
        <translation>%1 indica un dispositivo non supportato.</translation>
    </message>
    <message>
        <source>The hardware could not be configured: %1.</source>
        <translation>Non è stato possibile configurare l&apos;hardware: %1.</translation>
    </message>
    <message>
        <source>The hardware did not deliver a sweep in time.</source>
        <translation>L&apos;hardware non ha fornito uno sweep in tempo.</translation>
    </message>
</context>
<context>
    <name>SweepCsv</name>
    <message>
        <source>too many lines</source>
        <translation>troppe righe</translation>
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
        <translation>Scala lineare, da 0 a %1 V</translation>
    </message>
    <message>
        <source>Logarithmic scale, %1 to %2 dB, 0 dB is %3</source>
        <translation>Scala logaritmica, da %1 a %2 dB, 0 dB è %3</translation>
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
        <translation>Scala lineare, da 0 a %1, %2</translation>
    </message>
    <message>
        <source>Logarithmic scale, %1 to %2 dB, %3</source>
        <translation>Scala logaritmica, da %1 a %2 dB, %3</translation>
    </message>
    <message>
        <source>the file name of a picture must end in .png or .svg</source>
        <translation>il nome di un&apos;immagine deve finire in .png o .svg</translation>
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
        <translation>&quot;%1&quot; non è un&apos;opzione; vedere --help.</translation>
    </message>
    <message>
        <source>--%1 takes the name of a file.</source>
        <translation>--%1 vuole il nome di un file.</translation>
    </message>
    <message>
        <source>outside the range</source>
        <translation>fuori intervallo</translation>
    </message>
    <message>
        <source>Peak</source>
        <translation>Picco</translation>
    </message>
    <message>
        <source>Peak at</source>
        <translation>Picco a</translation>
    </message>
    <message>
        <source>-3 dB from</source>
        <translation>-3 dB da</translation>
    </message>
    <message>
        <source>-3 dB to</source>
        <translation>-3 dB a</translation>
    </message>
    <message>
        <source>-3 dB bandwidth</source>
        <translation>Banda a -3 dB</translation>
    </message>
    <message>
        <source>Write the curve as PNG or SVG.</source>
        <translation>Scrive la curva come PNG o SVG.</translation>
    </message>
    <message>
        <source>--%1 takes one of %2, not &quot;%3&quot;.</source>
        <translation>--%1 accetta uno tra %2, non «%3».</translation>
    </message>
    <message>
        <source>Write the sweep as CSV; - is standard output.</source>
        <translation>Scrive lo sweep come CSV; - è lo standard output.</translation>
    </message>
    <message>
        <source>--output and --picture name the same file.</source>
        <translation>--output e --picture indicano lo stesso file.</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>standard output</translation>
    </message>
    <message>
        <source>The reference does not cover the whole range: there are gaps.</source>
        <translation>Il riferimento non copre l&apos;intero intervallo: ci sono lacune.</translation>
    </message>
    <message>
        <source>The reference is partly below the detector&apos;s floor: there are gaps.</source>
        <translation>Il riferimento è in parte sotto la soglia del rivelatore: ci sono lacune.</translation>
    </message>
    <message>
        <source>Mean of %1 sweeps</source>
        <translation>Media di %1 sweep</translation>
    </message>
    <message>
        <source>Sweep</source>
        <translation>Sweep</translation>
    </message>
    <message>
        <source>relative to %1</source>
        <translation>rispetto a %1</translation>
    </message>
    <message>
        <source>Upper limit</source>
        <translation>Limite superiore</translation>
    </message>
    <message>
        <source>Lower limit</source>
        <translation>Limite inferiore</translation>
    </message>
    <message>
        <source>Limits</source>
        <translation>Limiti</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>superati</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>non superati</translation>
    </message>
    <message>
        <source>Worst at</source>
        <translation>Peggiore a</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Ampiezza</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Margine</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Fuori</translation>
    </message>
    <message>
        <source>%1 of %2 points</source>
        <translation>%1 punti su %2</translation>
    </message>
    <message>
        <source>volts</source>
        <translation>volt</translation>
    </message>
    <message>
        <source>dB</source>
        <translation>dB</translation>
    </message>
    <message>
        <source>Take this many sweeps, %1 to %2, and show their mean.</source>
        <translation>Esegue questo numero di sweep, da %1 a %2, e ne mostra la media.</translation>
    </message>
    <message>
        <source>Print the results of a kind of device: %1.</source>
        <translation>Stampa i risultati di un tipo di dispositivo: %1.</translation>
    </message>
    <message>
        <source>--%1 takes a whole number from %2 to %3, not &quot;%4&quot;.</source>
        <translation>--%1 vuole un numero intero da %2 a %3, non &quot;%4&quot;.</translation>
    </message>
    <message>
        <source>--%1 takes a number of ohms above 0, not &quot;%2&quot;.</source>
        <translation>--%1 vuole un numero di ohm maggiore di 0, non &quot;%2&quot;.</translation>
    </message>
    <message>
        <source>--%1 takes at most %2 files.</source>
        <translation>--%1 accetta al massimo %2 file.</translation>
    </message>
    <message>
        <source>--%1 needs %2.</source>
        <translation>--%1 richiede %2.</translation>
    </message>
    <message>
        <source>--%1 and --%2 name the same file.</source>
        <translation>--%1 e --%2 indicano lo stesso file.</translation>
    </message>
    <message>
        <source>the reference</source>
        <translation>il riferimento</translation>
    </message>
    <message>
        <source>--%1 takes a port from 1 to 65535, not &quot;%2&quot;.</source>
        <translation>--%1 richiede una porta da 1 a 65535, non &quot;%2&quot;.</translation>
    </message>
    <message>
        <source>Show these options.</source>
        <translation>Mostra queste opzioni.</translation>
    </message>
    <message>
        <source>The limits in %1 are in volts: they need --scale linear, and no --reference.</source>
        <translation>I limiti di %1 sono in volt: serve --scale linear e nessun --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 are in dB: they need a --scale in dB, and no --reference.</source>
        <translation>I limiti di %1 sono in dB: serve una --scale in dB e nessun --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 are in relative dB: they need a --scale in dB, and a --reference.</source>
        <translation>I limiti di %1 sono in dB relativi: servono una --scale in dB e un --reference.</translation>
    </message>
    <message>
        <source>The limits in %1 do not cover any point of the sweep.</source>
        <translation>I limiti di %1 non riguardano alcun punto dello sweep.</translation>
    </message>
    <message>
        <source>Waiting for SCPI clients on port %1</source>
        <translation>In attesa di client SCPI sulla porta %1</translation>
    </message>
    <message>
        <source>%1: the amplitudes do not match the counts; they are read as %2.</source>
        <translation>%1: le ampiezze non corrispondono ai conteggi; vengono lette come %2.</translation>
    </message>
    <message>
        <source>Settings file; the window&apos;s file by default.</source>
        <translation>File delle impostazioni; in mancanza, quello della finestra.</translation>
    </message>
    <message>
        <source>First frequency in Hz, instead of the one in the settings.</source>
        <translation>Prima frequenza in Hz, al posto di quella delle impostazioni.</translation>
    </message>
    <message>
        <source>Last frequency in Hz, instead of the one in the settings.</source>
        <translation>Ultima frequenza in Hz, al posto di quella delle impostazioni.</translation>
    </message>
    <message>
        <source>Take this many sweeps and keep the last; 1 by default.</source>
        <translation>Esegue questo numero di sweep e tiene l&apos;ultimo; 1 se manca.</translation>
    </message>
    <message>
        <source>Read the sweep from a file instead of measuring.</source>
        <translation>Legge lo sweep da un file invece di misurare.</translation>
    </message>
    <message>
        <source>Show everything relative to the sweep in this file.</source>
        <translation>Mostra tutto rispetto allo sweep di questo file.</translation>
    </message>
    <message>
        <source>Source and load resistance of a crystal fixture, in ohms; %1 by default.</source>
        <translation>Resistenza della sorgente e del carico del supporto di un quarzo, in ohm; %1 se manca.</translation>
    </message>
    <message>
        <source>Check the sweep against the limits in this file.</source>
        <translation>Verifica lo sweep con i limiti di questo file.</translation>
    </message>
    <message>
        <source>Output format: %1.</source>
        <translation>Formato dell&apos;uscita: %1.</translation>
    </message>
    <message>
        <source>Also draw the sweeps from these files in the picture; at most %1.</source>
        <translation>Disegna nell&apos;immagine anche gli sweep di questi file; al massimo %1.</translation>
    </message>
    <message>
        <source>Accept SCPI commands on this local TCP port until a signal ends the program.</source>
        <translation>Accetta comandi SCPI su questa porta TCP locale finché un segnale non termina il programma.</translation>
    </message>
    <message>
        <source>Takes a sweep without a window. Without --output and --picture, it prints the response as figures and a plot.</source>
        <translation>Esegue uno sweep senza finestra. Senza --output e --picture stampa la risposta in cifre e come grafico.</translation>
    </message>
    <message>
        <source>The file name of a picture must end in .png or .svg, not &quot;%1&quot;.</source>
        <translation>Il nome di un&apos;immagine deve finire in .png o .svg, non &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>--%1 takes a whole number of at least 1, not &quot;%2&quot;.</source>
        <translation>--%1 vuole un numero intero da 1 in su, non &quot;%2&quot;.</translation>
    </message>
    <message>
        <source>--%1 and --%2 cannot be combined.</source>
        <translation>--%1 e --%2 non si possono indicare insieme.</translation>
    </message>
    <message>
        <source>--%1 and --%2 cannot both use standard output.</source>
        <translation>--%1 e --%2 non possono usare entrambi lo standard output.</translation>
    </message>
    <message>
        <source>--%1 is the settings file.</source>
        <translation>--%1 è il file delle impostazioni.</translation>
    </message>
    <message>
        <source>The reference in %1 does not cover any point of the sweep.</source>
        <translation>Il riferimento in %1 non copre alcun punto dello sweep.</translation>
    </message>
    <message>
        <source>Scale of the amplitudes, instead of the one in the settings: %1; the numbers 0 to %2 mean the same.</source>
        <translation>Scala delle ampiezze, al posto di quella delle impostazioni: %1; i numeri da 0 a %2 significano lo stesso.</translation>
    </message>
</context>
<context>
    <name>ThreadStart</name>
    <message>
        <source>The computer cannot start another thread; close other programs and try again.</source>
        <translation>Il computer non può avviare un altro thread; chiudere altri programmi e riprovare.</translation>
    </message>
</context>
<context>
    <name>TraceFile</name>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, riga %2: %3</translation>
    </message>
    <message>
        <source>%1: the frequencies are not equally spaced.</source>
        <translation>%1: le frequenze non sono equidistanti.</translation>
    </message>
</context>
<context>
    <name>calvorn::AcquisitionDriver</name>
    <message>
        <source>Wrong serial port number (COM%1).</source>
        <translation>Numero della porta seriale errato (COM%1).</translation>
    </message>
    <message>
        <source>Please verify &apos;SetUp/Configuration/Ports&apos;.</source>
        <translation>Verificare &apos;Impostazioni/Configurazione/Porte&apos;.</translation>
    </message>
    <message>
        <source>The acquisition server has ended unexpectedly.</source>
        <translation>Il server di acquisizione è terminato inaspettatamente.</translation>
    </message>
    <message>
        <source>Start sweep</source>
        <translation>Start sweep</translation>
    </message>
    <message>
        <source>it did not answer in time and was terminated</source>
        <translation>non ha risposto in tempo ed è stato terminato</translation>
    </message>
    <message>
        <source>The acquisition server did not answer and was terminated.</source>
        <translation>Il server di acquisizione non ha risposto ed è stato terminato.</translation>
    </message>
    <message>
        <source>The acquisition server sent an endless stream of events and was terminated.</source>
        <translation>Il server di acquisizione inviava eventi senza fine ed è stato terminato.</translation>
    </message>
    <message>
        <source>&quot;Sweep ON&quot; restarts it.</source>
        <translation>&quot;Avvia sweep&quot; lo fa ripartire.</translation>
    </message>
</context>
<context>
    <name>calvorn::AcquisitionServer</name>
    <message>
        <source>cannot create a socket in %1: %2</source>
        <translation>non è possibile creare un socket in %1: %2</translation>
    </message>
</context>
<context>
    <name>calvorn::AdcPage</name>
    <message>
        <source>Detector</source>
        <translation>Rivelatore</translation>
    </message>
    <message>
        <source>&amp;Step - mV per count</source>
        <translation>Pa&amp;sso - mV per conteggio</translation>
    </message>
    <message>
        <source>C&amp;hannel</source>
        <translation>&amp;Canale</translation>
    </message>
    <message>
        <source>The step is the reference voltage of the converter divided by its counts: 2.5 V are 2.441 mV per count with 10 bits, and 9.766 mV with 8 bits.</source>
        <translation>Il passo è la tensione di riferimento del convertitore divisa per i suoi conteggi: 2,5 V danno 2,441 mV per conteggio con 10 bit e 9,766 mV con 8 bit.</translation>
    </message>
    <message>
        <source>&amp;8 bit</source>
        <translation>&amp;8 bit</translation>
    </message>
    <message>
        <source>1&amp;0 bit</source>
        <translation>1&amp;0 bit</translation>
    </message>
    <message>
        <source>Counts from 0 to 255</source>
        <translation>Conteggi da 0 a 255</translation>
    </message>
    <message>
        <source>Counts from 0 to 1023</source>
        <translation>Conteggi da 0 a 1023</translation>
    </message>
    <message>
        <source>Converter</source>
        <translation>Convertitore</translation>
    </message>
    <message>
        <source>Millivolts at the detector for one count of the converter</source>
        <translation>Millivolt al rivelatore per un conteggio del convertitore</translation>
    </message>
    <message>
        <source>Step in mV per count</source>
        <translation>Passo in mV per conteggio</translation>
    </message>
    <message>
        <source>MiniVNA: 1 angle, 2 return loss, 3 device under test. The other interfaces do not use it.</source>
        <translation>MiniVNA: 1 angolo, 2 return loss, 3 dispositivo in prova. Le altre interfacce non lo usano.</translation>
    </message>
    <message>
        <source>Channel of the converter</source>
        <translation>Canale del convertitore</translation>
    </message>
    <message>
        <source>Offset: </source>
        <translation>Offset: </translation>
    </message>
    <message>
        <source>not used by this interface</source>
        <translation>non usato da questa interfaccia</translation>
    </message>
    <message>
        <source>angle</source>
        <translation>angolo</translation>
    </message>
    <message>
        <source>return loss</source>
        <translation>return loss</translation>
    </message>
    <message>
        <source>device under test</source>
        <translation>dispositivo in prova</translation>
    </message>
    <message>
        <source>1 angle, 2 return loss, 3 device under test</source>
        <translation>1 angolo, 2 return loss, 3 dispositivo in prova</translation>
    </message>
    <message>
        <source>Set by &quot;SetUp/Calibrate detector&quot;; added to every voltage</source>
        <translation>Regolato con &quot;Impostazioni/Taratura rivelatore&quot;, sommato a ogni tensione</translation>
    </message>
    <message>
        <source>Meaning of the number</source>
        <translation>Significato del numero</translation>
    </message>
</context>
<context>
    <name>calvorn::AmplitudeAxis</name>
    <message>
        <source>Top of the linear scale in volts, up to 10</source>
        <translation>Fondo scala lineare in volt, fino a 10</translation>
    </message>
    <message>
        <source>Full scale in volts</source>
        <translation>Fondo scala in volt</translation>
    </message>
    <message>
        <source>Bottom of the logarithmic scales in dB, down to -90</source>
        <translation>Limite inferiore delle scale logaritmiche in dB, fino a -90</translation>
    </message>
    <message>
        <source>Lowest level in dB</source>
        <translation>Livello minimo in dB</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Unit of the amplitude axis</source>
        <translation>Unità dell&apos;asse delle ampiezze</translation>
    </message>
    <message>
        <source>Amplitude at this line of the grid</source>
        <translation>Ampiezza a questa linea della griglia</translation>
    </message>
    <message>
        <source>Amplitude label %1</source>
        <translation>Etichetta di ampiezza %1</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>Rapporto</translation>
    </message>
    <message>
        <source>%1, relative</source>
        <translation>%1, relativi</translation>
    </message>
</context>
<context>
    <name>calvorn::AuxOutput</name>
    <message>
        <source>This output is not enabled in the configuration.</source>
        <translation>Questa uscita non è abilitata nella configurazione.</translation>
    </message>
    <message>
        <source>Click: off, half, on</source>
        <translation>Clic: spento, metà, acceso</translation>
    </message>
    <message>
        <source>Sum of the steps that are on</source>
        <translation>Somma dei passi accesi</translation>
    </message>
    <message>
        <source>Total of output %1</source>
        <translation>Totale dell&apos;uscita %1</translation>
    </message>
    <message>
        <source>Digital potentiometer</source>
        <translation>Potenziometro digitale</translation>
    </message>
    <message>
        <source>Position of the potentiometer</source>
        <translation>Posizione del potenziometro</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Totale</translation>
    </message>
    <message>
        <source>Potentiometer</source>
        <translation>Potenziometro</translation>
    </message>
</context>
<context>
    <name>calvorn::AuxPage</name>
    <message>
        <source>Auxiliary outputs (parallel port only)</source>
        <translation>Uscite ausiliarie (solo porta parallela)</translation>
    </message>
    <message>
        <source>Output %1</source>
        <translation>Uscita %1</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Abilitata</translation>
    </message>
    <message>
        <source>Output %1 enabled</source>
        <translation>Uscita %1 abilitata</translation>
    </message>
    <message>
        <source>Inverse logic</source>
        <translation>Logica inversa</translation>
    </message>
    <message>
        <source>Output %1 inverse</source>
        <translation>Uscita %1 inversa</translation>
    </message>
    <message>
        <source>The heading of this output in the main window</source>
        <translation>Il titolo di questa uscita nella finestra principale</translation>
    </message>
    <message>
        <source>Title of output %1</source>
        <translation>Titolo dell&apos;uscita %1</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Etichetta</translation>
    </message>
    <message>
        <source>Value - dB</source>
        <translation>Valore - dB</translation>
    </message>
    <message>
        <source>Enter the label or leave &apos;blank&apos; to disable this button</source>
        <translation>Scrivere l&apos;etichetta, o lasciare vuoto per disabilitare questo pulsante</translation>
    </message>
    <message>
        <source>Output %1, label of step %2</source>
        <translation>Uscita %1, etichetta del passo %2</translation>
    </message>
    <message>
        <source>Step %1</source>
        <translation>Passo %1</translation>
    </message>
    <message>
        <source>Enter the value to be sent to the attenuator</source>
        <translation>Scrivere il valore da inviare all&apos;attenuatore</translation>
    </message>
    <message>
        <source>Output %1, value of step %2</source>
        <translation>Uscita %1, valore del passo %2</translation>
    </message>
    <message>
        <source>Potentiometer</source>
        <translation>Potenziometro</translation>
    </message>
    <message>
        <source>Range of the potentiometer</source>
        <translation>Intervallo del potenziometro</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Massimo</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimo</translation>
    </message>
    <message>
        <source>Show the buttons of this output in the main window</source>
        <translation>Mostra i pulsanti di questa uscita nella finestra principale</translation>
    </message>
    <message>
        <source>Invert every bit of the byte</source>
        <translation>Inverte tutti i bit del byte</translation>
    </message>
    <message>
        <source>Highest position, 0 to 255; leave empty if there is no potentiometer</source>
        <translation>Posizione più alta, da 0 a 255; vuota se non c&apos;è il potenziometro</translation>
    </message>
    <message>
        <source>Lowest position, 0 to 255; leave empty if there is no potentiometer</source>
        <translation>Posizione più bassa, da 0 a 255; vuota se non c&apos;è il potenziometro</translation>
    </message>
    <message>
        <source>Range of the potentiometer in the main window</source>
        <translation>Intervallo del potenziometro nella finestra principale</translation>
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
        <translation>Imposta la frequenza iniziale su M1</translation>
    </message>
    <message>
        <source>Set the stop frequency to M2</source>
        <translation>Imposta la frequenza finale su M2</translation>
    </message>
</context>
<context>
    <name>calvorn::BoardMenus</name>
    <message>
        <source>&amp;Simulated board</source>
        <translation>&amp;Scheda simulata</translation>
    </message>
    <message>
        <source>M&amp;iniVNA mode</source>
        <translation>Modo M&amp;iniVNA</translation>
    </message>
    <message>
        <source>&amp;Band-pass filter, 7.1 MHz</source>
        <translation>Filtro passa &amp;banda, 7,1 MHz</translation>
    </message>
    <message>
        <source>&amp;Low-pass filter, 7 MHz</source>
        <translation>Filtro passa b&amp;asso, 7 MHz</translation>
    </message>
    <message>
        <source>&amp;Notch, 7 MHz</source>
        <translation>&amp;Notch, 7 MHz</translation>
    </message>
    <message>
        <source>&amp;Crystal, 9 MHz</source>
        <translation>&amp;Quarzo, 9 MHz</translation>
    </message>
    <message>
        <source>&amp;Through, a piece of cable</source>
        <translation>&amp;Collegamento diretto, un pezzo di cavo</translation>
    </message>
    <message>
        <source>Simulated board: %1</source>
        <translation>Scheda simulata: %1</translation>
    </message>
    <message>
        <source>&amp;Antenna at a bridge, 7.05 MHz</source>
        <translation>&amp;Antenna su un ponte, 7,05 MHz</translation>
    </message>
    <message>
        <source>From a &amp;file</source>
        <translation>Da un &amp;file</translation>
    </message>
</context>
<context>
    <name>calvorn::CalibrationDialog</name>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Applica</translation>
    </message>
    <message>
        <source>&amp;EXIT</source>
        <translation>&amp;ESCI</translation>
    </message>
    <message>
        <source>Apply this offset; it is saved when the program closes</source>
        <translation>Applica questo offset; viene salvato alla chiusura del programma</translation>
    </message>
    <message>
        <source>Close without applying the offset</source>
        <translation>Chiude senza applicare l&apos;offset</translation>
    </message>
</context>
<context>
    <name>calvorn::DdsPage</name>
    <message>
        <source>Synthesiser</source>
        <translation>Sintetizzatore</translation>
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
        <translation>Clock di sistema fino a 125 MHz, utile fino a 40 MHz</translation>
    </message>
    <message>
        <source>System clock up to 180 MHz with its six-fold multiplier, useful up to 70 MHz</source>
        <translation>Clock di sistema fino a 180 MHz con il suo moltiplicatore per 6, utile fino a 70 MHz</translation>
    </message>
    <message>
        <source>System clock up to 400 MHz with its multiplier of 4 to 20, useful up to 160 MHz</source>
        <translation>Clock di sistema fino a 400 MHz con il suo moltiplicatore da 4 a 20, utile fino a 160 MHz</translation>
    </message>
    <message>
        <source>DDS chip</source>
        <translation>Chip DDS</translation>
    </message>
    <message>
        <source>Reference clock multiplier × &amp;6</source>
        <translation>Moltiplicatore del clock × &amp;6</translation>
    </message>
    <message>
        <source>Frequency of the crystal oscillator on the board, in Hz</source>
        <translation>Frequenza dell&apos;oscillatore a quarzo della scheda, in Hz</translation>
    </message>
    <message>
        <source>Reference clock in Hz</source>
        <translation>Clock di riferimento in Hz</translation>
    </message>
    <message>
        <source>&amp;Reference clock - Hz</source>
        <translation>Cloc&amp;k di riferimento - Hz</translation>
    </message>
    <message>
        <source>&amp;No multiplier</source>
        <translation>&amp;Nessun moltiplicatore</translation>
    </message>
    <message>
        <source>The reference clock is the system clock</source>
        <translation>Il clock di riferimento è il clock di sistema</translation>
    </message>
    <message>
        <source>M&amp;ultiplier</source>
        <translation>M&amp;oltiplicatore</translation>
    </message>
    <message>
        <source>The chip multiplies the reference clock by 4 to 20</source>
        <translation>Il chip moltiplica il clock di riferimento da 4 a 20 volte</translation>
    </message>
    <message>
        <source>Factor of the multiplier, 4 to 20</source>
        <translation>Fattore del moltiplicatore, da 4 a 20</translation>
    </message>
    <message>
        <source>Factor of the multiplier</source>
        <translation>Fattore del moltiplicatore</translation>
    </message>
    <message>
        <source>The highest frequency that can be entered, in Hz</source>
        <translation>La frequenza più alta che si può impostare, in Hz</translation>
    </message>
    <message>
        <source>Maximum frequency in Hz</source>
        <translation>Frequenza massima in Hz</translation>
    </message>
    <message>
        <source>The lowest frequency that can be entered, in Hz</source>
        <translation>La frequenza più bassa che si può impostare, in Hz</translation>
    </message>
    <message>
        <source>Minimum frequency in Hz</source>
        <translation>Frequenza minima in Hz</translation>
    </message>
    <message>
        <source>Reference clock × multiplier</source>
        <translation>Clock di riferimento × moltiplicatore</translation>
    </message>
    <message>
        <source>System clock in Hz</source>
        <translation>Clock di sistema in Hz</translation>
    </message>
    <message>
        <source>Limits of the chip</source>
        <translation>Limiti del chip</translation>
    </message>
    <message>
        <source>Clock and limits</source>
        <translation>Clock e limiti</translation>
    </message>
    <message>
        <source>System clock - Hz</source>
        <translation>Clock di sistema - Hz</translation>
    </message>
    <message>
        <source>Ma&amp;ximum frequency - Hz</source>
        <translation>Frequenza ma&amp;ssima - Hz</translation>
    </message>
    <message>
        <source>Minimum frequenc&amp;y - Hz</source>
        <translation>Frequenza &amp;minima - Hz</translation>
    </message>
    <message>
        <source>Frequency offset: </source>
        <translation>Offset di frequenza: </translation>
    </message>
    <message>
        <source>The chip multiplies the reference clock by 6</source>
        <translation>Il chip moltiplica per 6 il clock di riferimento</translation>
    </message>
    <message>
        <source>Specified limits of the chip</source>
        <translation>Limiti del chip secondo i dati tecnici</translation>
    </message>
    <message>
        <source>Set by &quot;SetUp/Calibrate generator&quot;; added to every frequency</source>
        <translation>Regolato con &quot;Impostazioni/Taratura generatore&quot;, sommato a ogni frequenza</translation>
    </message>
</context>
<context>
    <name>calvorn::DetectorLawBox</name>
    <message>
        <source>Law</source>
        <translation>Legge</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>Lineare</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>Logaritmica</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabella</translation>
    </message>
    <message>
        <source>Slope and intercept from the data sheet of a detector</source>
        <translation>Pendenza e intercetta dal foglio tecnico di un rivelatore</translation>
    </message>
    <message>
        <source>Another</source>
        <translation>Un altro</translation>
    </message>
    <message>
        <source>La&amp;w</source>
        <translation>Le&amp;gge</translation>
    </message>
    <message>
        <source>Detecto&amp;r</source>
        <translation>Ri&amp;velatore</translation>
    </message>
    <message>
        <source>Slope - &amp;mV per dB</source>
        <translation>Pendenza - &amp;mV per dB</translation>
    </message>
    <message>
        <source>I&amp;ntercept - dBm</source>
        <translation>I&amp;ntercetta - dBm</translation>
    </message>
    <message>
        <source>Slope in mV per dB</source>
        <translation>Pendenza in mV per dB</translation>
    </message>
    <message>
        <source>Intercept in dBm</source>
        <translation>Intercetta in dBm</translation>
    </message>
    <message>
        <source>About the chosen law</source>
        <translation>Informazioni sulla legge scelta</translation>
    </message>
    <message>
        <source>Relation between input level and detector voltage</source>
        <translation>Relazione tra livello d&apos;ingresso e tensione del rivelatore</translation>
    </message>
    <message>
        <source>Millivolts per dB, 1 to 1000; negative if the voltage falls as the level rises</source>
        <translation>Millivolt per dB, da 1 a 1000; negativi se la tensione cala al crescere del livello</translation>
    </message>
    <message>
        <source>Level at which the detector&apos;s line reaches 0 V</source>
        <translation>Livello al quale la retta del rivelatore raggiunge 0 V</translation>
    </message>
    <message>
        <source>There is no table yet: create one with &quot;SetUp/Calibrate level&quot;.</source>
        <translation>Non c&apos;è ancora una tabella: crearla con &quot;Impostazioni/Taratura livello&quot;.</translation>
    </message>
    <message>
        <source>The voltages are those at the detector output.</source>
        <translation>Le tensioni sono quelle all&apos;uscita del rivelatore.</translation>
    </message>
    <message>
        <source>The voltages are RMS at the input, into 50 ohms.</source>
        <translation>Le tensioni sono RMS all&apos;ingresso, su 50 ohm.</translation>
    </message>
    <message>
        <source>%1 points from %2 to %3 dBm, created with &quot;SetUp/Calibrate level&quot;</source>
        <translation>%1 punti da %2 a %3 dBm, ottenuti con &quot;Impostazioni/Taratura livello&quot;</translation>
    </message>
</context>
<context>
    <name>calvorn::DigitBars</name>
    <message>
        <source>Step this digit</source>
        <translation>Cambia questa cifra</translation>
    </message>
    <message>
        <source>Digit %1</source>
        <translation>Cifra %1</translation>
    </message>
</context>
<context>
    <name>calvorn::DriverEvents</name>
    <message>
        <source>Stop sweep</source>
        <translation>Stop sweep</translation>
    </message>
    <message>
        <source>Mode: %1</source>
        <translation>Modo: %1</translation>
    </message>
</context>
<context>
    <name>calvorn::FrequencyLabels</name>
    <message>
        <source>Frequencies of the grid</source>
        <translation>Frequenze della griglia</translation>
    </message>
</context>
<context>
    <name>calvorn::FrequencyReadouts</name>
    <message>
        <source>start</source>
        <translation>inizio</translation>
    </message>
    <message>
        <source>Frequency of the first sample, Hz</source>
        <translation>Frequenza del primo campione, Hz</translation>
    </message>
    <message>
        <source>center</source>
        <translation>centro</translation>
    </message>
    <message>
        <source>Frequency of sample 200, Hz</source>
        <translation>Frequenza del campione 200, Hz</translation>
    </message>
    <message>
        <source>stop</source>
        <translation>fine</translation>
    </message>
    <message>
        <source>Frequency of the last sample, Hz</source>
        <translation>Frequenza dell&apos;ultimo campione, Hz</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmAbout</name>
    <message>
        <source>About Calvorn</source>
        <translation>Informazioni su Calvorn</translation>
    </message>
    <message>
        <source>Interface:</source>
        <translation>Interfaccia:</translation>
    </message>
    <message>
        <source>DDS Device:</source>
        <translation>Dispositivo DDS:</translation>
    </message>
    <message>
        <source>DAC Device:</source>
        <translation>Dispositivo DAC:</translation>
    </message>
    <message>
        <source>Without any warranty. Check your wiring before you switch on.</source>
        <translation>Senza alcuna garanzia. Controllare il cablaggio prima di accendere.</translation>
    </message>
    <message>
        <source>Free to use, change and pass on under the terms of the MIT licence.</source>
        <translation>Libero da usare, modificare e distribuire secondo la licenza MIT.</translation>
    </message>
    <message>
        <source>EXIT</source>
        <translation>ESCI</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Chiude questa finestra</translation>
    </message>
    <message>
        <source>, ClockRef: </source>
        <translation>, clock rif.: </translation>
    </message>
    <message>
        <source>MHz, Multiplier: </source>
        <translation>MHz, moltiplicatore: </translation>
    </message>
    <message>
        <source>, Max frequency: </source>
        <translation>, freq. max: </translation>
    </message>
    <message>
        <source>Calvorn %1, made by the Calvorn authors for radio amateurs.</source>
        <translation>Calvorn %1, creato dagli autori di Calvorn per i radioamatori.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraADC</name>
    <message>
        <source>Detector calibration</source>
        <translation>Taratura del rivelatore</translation>
    </message>
    <message>
        <source>1. Select &apos;View/Table&apos; and &apos;Scale/Linear&apos;.</source>
        <translation>1. Scegliere &apos;Vista/Tabella&apos; e &apos;Scala/Lineare&apos;.</translation>
    </message>
    <message>
        <source>2. Connect the input of the detector to a known voltage.</source>
        <translation>2. Collegare l&apos;ingresso del rivelatore a una tensione nota.</translation>
    </message>
    <message>
        <source>3. Adjust the offset until the right voltage is presented.</source>
        <translation>3. Regolare l&apos;offset finché appare la tensione giusta.</translation>
    </message>
    <message>
        <source>4. Everytime you &apos;Apply&apos;, table will be updated with the new offset</source>
        <translation>4. A ogni &apos;Applica&apos; la tabella si aggiorna con il nuovo offset</translation>
    </message>
    <message>
        <source>Offset - Volt</source>
        <translation>Offset - Volt</translation>
    </message>
    <message>
        <source>Step the offset by 0.001 V</source>
        <translation>Cambia l&apos;offset di 0,001 V</translation>
    </message>
    <message>
        <source>The voltage that the detector reads with this offset</source>
        <translation>La tensione che il rivelatore legge con questo offset</translation>
    </message>
    <message>
        <source>Detector - Volt</source>
        <translation>Rivelatore - Volt</translation>
    </message>
    <message>
        <source>This interface reads its detector only during sweeps.</source>
        <translation>Questa interfaccia legge il rivelatore solo durante lo sweep.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraDDS</name>
    <message>
        <source>Generator calibration</source>
        <translation>Taratura del generatore</translation>
    </message>
    <message>
        <source>1. Select any start frequency.</source>
        <translation>1. Scegliere una frequenza iniziale qualsiasi.</translation>
    </message>
    <message>
        <source>2. Connect the output of the generator to a frequency meter.</source>
        <translation>2. Collegare l&apos;uscita del generatore a un frequenzimetro.</translation>
    </message>
    <message>
        <source>3. Adjust the offset until the meter shows the right start frequency.</source>
        <translation>3. Regolare l&apos;offset finché il frequenzimetro mostra la frequenza iniziale giusta.</translation>
    </message>
    <message>
        <source>4. Apply</source>
        <translation>4. Applica</translation>
    </message>
    <message>
        <source>Offset - Hz</source>
        <translation>Offset - Hz</translation>
    </message>
    <message>
        <source>Step the offset by 0.01 Hz</source>
        <translation>Cambia l&apos;offset di 0,01 Hz</translation>
    </message>
    <message>
        <source>Start frequency in Hz</source>
        <translation>Frequenza iniziale in Hz</translation>
    </message>
    <message>
        <source>Start frequency - Hz</source>
        <translation>Frequenza iniziale - Hz</translation>
    </message>
    <message>
        <source>Expected reading of the frequency meter</source>
        <translation>Lettura attesa del frequenzimetro</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmCalibraLevel</name>
    <message>
        <source>&amp;Measure</source>
        <translation>&amp;Misura</translation>
    </message>
    <message>
        <source>Level calibration</source>
        <translation>Taratura del livello</translation>
    </message>
    <message>
        <source>1. Connect a source of known level to the detector, through a step attenuator.</source>
        <translation>1. Collegare al rivelatore una sorgente di livello noto, attraverso un attenuatore a scatti.</translation>
    </message>
    <message>
        <source>A sweep is running: stop it first.</source>
        <translation>Uno sweep è in corso: fermarlo prima.</translation>
    </message>
    <message>
        <source>The hardware is not connected.</source>
        <translation>L&apos;hardware non è collegato.</translation>
    </message>
    <message>
        <source>&amp;Source - dBm</source>
        <translation>&amp;Sorgente - dBm</translation>
    </message>
    <message>
        <source>A&amp;ttenuator - dB</source>
        <translation>A&amp;ttenuatore - dB</translation>
    </message>
    <message>
        <source>&amp;Logarithmic</source>
        <translation>&amp;Logaritmica</translation>
    </message>
    <message>
        <source>Slope and intercept that fit the points best</source>
        <translation>Pendenza e intercetta che meglio si adattano ai punti</translation>
    </message>
    <message>
        <source>Ta&amp;ble</source>
        <translation>Ta&amp;bella</translation>
    </message>
    <message>
        <source>dBm</source>
        <translation>dBm</translation>
    </message>
    <message>
        <source>Spread - mV</source>
        <translation>Dispersione - mV</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>T&amp;ogli</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Applica</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>A&amp;nnulla</translation>
    </message>
    <message>
        <source>Reading the detector ...</source>
        <translation>Lettura del rivelatore ...</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 punti</translation>
    </message>
    <message>
        <source>%1 mV per dB, intercept %2 dBm, %3</source>
        <translation>%1 mV per dB, intercetta %2 dBm, %3</translation>
    </message>
    <message>
        <source>Points still needed: %1</source>
        <translation>Punti ancora necessari: %1</translation>
    </message>
    <message>
        <source>mV</source>
        <translation>mV</translation>
    </message>
    <message>
        <source>%1 readings: %2 mV</source>
        <translation>%1 letture: %2 mV</translation>
    </message>
    <message>
        <source>Attenuation between source and detector, in dB</source>
        <translation>Attenuazione tra sorgente e rivelatore, in dB</translation>
    </message>
    <message>
        <source>2. Enter its level and the attenuation, and press &quot;Measure&quot;.</source>
        <translation>2. Scrivere il suo livello e l&apos;attenuazione, poi premere &quot;Misura&quot;.</translation>
    </message>
    <message>
        <source>3. Repeat this with the next step. A logarithmic law needs two points, a table three.</source>
        <translation>3. Ripetere con lo scatto seguente. Una legge logaritmica richiede due punti, una tabella tre.</translation>
    </message>
    <message>
        <source>Result of the last measurement</source>
        <translation>Risultato dell&apos;ultima misura</translation>
    </message>
    <message>
        <source>The instrument measures the phase: choose RetLoss or DUT.</source>
        <translation>Lo strumento misura la fase: scegliere RetLoss o DUT.</translation>
    </message>
    <message>
        <source>The measured points, and the error of the law at each of them</source>
        <translation>I punti misurati e l&apos;errore della legge in ciascuno</translation>
    </message>
    <message>
        <source>Error - dB</source>
        <translation>Errore - dB</translation>
    </message>
    <message>
        <source>Remove the selected points</source>
        <translation>Rimuove i punti selezionati</translation>
    </message>
    <message>
        <source>The law calculated from the points</source>
        <translation>La legge calcolata dai punti</translation>
    </message>
    <message>
        <source>Use this law and save it in the settings</source>
        <translation>Usa questa legge e la salva nelle impostazioni</translation>
    </message>
    <message>
        <source>largest error %1 dB</source>
        <translation>errore massimo %1 dB</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Chiude senza modifiche</translation>
    </message>
    <message>
        <source>Level of the source, in dBm into 50 ohms</source>
        <translation>Il livello della sorgente, in dBm su 50 ohm</translation>
    </message>
    <message>
        <source>Read the detector %1 times at this level</source>
        <translation>Legge il rivelatore %1 volte a questo livello</translation>
    </message>
    <message>
        <source>You can use the board&apos;s generator as the source: it is set to the start frequency.</source>
        <translation>La sorgente può essere il generatore della scheda: viene messo sulla frequenza iniziale.</translation>
    </message>
    <message>
        <source>The measured points, with interpolation between them</source>
        <translation>I punti misurati, con interpolazione tra loro</translation>
    </message>
    <message>
        <source>A table has at most %1 points.</source>
        <translation>Una tabella ha al massimo %1 punti.</translation>
    </message>
    <message>
        <source>The best-fit line has a slope outside 1 to 1000 mV per dB, or an intercept beyond ±200 dBm: no law can be calculated.</source>
        <translation>La retta migliore ha una pendenza fuori da 1...1000 mV per dB o un&apos;intercetta oltre ±200 dBm: nessuna legge calcolabile.</translation>
    </message>
    <message>
        <source>The voltage does not rise or fall steadily with the level: no law can be calculated.</source>
        <translation>La tensione non sale né scende in modo continuo con il livello: nessuna legge calcolabile.</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmPreferences</name>
    <message>
        <source>Preferences</source>
        <translation>Preferenze</translation>
    </message>
    <message>
        <source>Cursor type</source>
        <translation>Tipo di cursore</translation>
    </message>
    <message>
        <source>&amp;Linked</source>
        <translation>&amp;Collegato</translation>
    </message>
    <message>
        <source>&amp;Floating cross</source>
        <translation>Croce &amp;mobile</translation>
    </message>
    <message>
        <source>The read-out follows the mouse</source>
        <translation>La lettura segue il mouse</translation>
    </message>
    <message>
        <source>EXIT</source>
        <translation>ESCI</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Chiude questa finestra</translation>
    </message>
    <message>
        <source>Limit the Logaritmic Scales to the range of the ADC (%1)</source>
        <translation>Limita le scale logaritmiche al campo dell&apos;ADC (%1)</translation>
    </message>
    <message>
        <source>This box has no effect: the scales keep their full range.</source>
        <translation>Questa casella non ha effetto: le scale mantengono tutta la loro estensione.</translation>
    </message>
    <message>
        <source>Remote control</source>
        <translation>Controllo remoto</translation>
    </message>
    <message>
        <source>TCP port</source>
        <translation>Porta TCP</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>&amp;Porta</translation>
    </message>
    <message>
        <source>A cross follows the curve under the mouse</source>
        <translation>Una croce segue la curva sotto il mouse</translation>
    </message>
    <message>
        <source>No effect. The number is the minimum level that the converter can distinguish from zero, in dB</source>
        <translation>Senza effetto. Il numero è il livello più basso che il convertitore distingue da zero, in dB</translation>
    </message>
    <message>
        <source>Allow &amp;SCPI clients on this computer</source>
        <translation>Consenti client &amp;SCPI su questo computer</translation>
    </message>
    <message>
        <source>Let your own programs on this computer control the window</source>
        <translation>Permette ai propri programmi su questo computer di controllare la finestra</translation>
    </message>
    <message>
        <source>TCP port for the clients</source>
        <translation>Porta TCP per i client</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSetUp</name>
    <message>
        <source>Configuration</source>
        <translation>Configurazione</translation>
    </message>
    <message>
        <source>&amp;Interface</source>
        <translation>&amp;Interfaccia</translation>
    </message>
    <message>
        <source>Which hardware is connected</source>
        <translation>Quale hardware è collegato</translation>
    </message>
    <message>
        <source>Syn&amp;thesiser</source>
        <translation>Sin&amp;tetizzatore</translation>
    </message>
    <message>
        <source>The generator chip, its clock and its limits</source>
        <translation>Il chip del generatore, il suo clock e i suoi limiti</translation>
    </message>
    <message>
        <source>&amp;Detector</source>
        <translation>&amp;Rivelatore</translation>
    </message>
    <message>
        <source>The converter of the detector</source>
        <translation>Il convertitore del rivelatore</translation>
    </message>
    <message>
        <source>Auxi&amp;liary</source>
        <translation>Ausi&amp;liarie</translation>
    </message>
    <message>
        <source>The auxiliary outputs of the parallel-port board</source>
        <translation>Le uscite ausiliarie della scheda a porta parallela</translation>
    </message>
    <message>
        <source>&amp;Ports</source>
        <translation>&amp;Porte</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Applica</translation>
    </message>
    <message>
        <source>&amp;EXIT</source>
        <translation>&amp;ESCI</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Alcune impostazioni non sono leggibili.</translation>
    </message>
    <message>
        <source>Please confirm, now program will exit.</source>
        <translation>Confermare: ora il programma si chiude.</translation>
    </message>
    <message>
        <source>Please restart.</source>
        <translation>Riavviarlo, per favore.</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Chiude senza modifiche</translation>
    </message>
    <message>
        <source>The serial port and the parallel port</source>
        <translation>La porta seriale e la porta parallela</translation>
    </message>
    <message>
        <source>Save the configuration and close the program; changes take effect at the next start</source>
        <translation>Salva la configurazione e chiude il programma; le modifiche valgono dal prossimo avvio</translation>
    </message>
    <message>
        <source>the configuration could not be written to %1</source>
        <translation>la configurazione non è stata scritta in %1</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSpan</name>
    <message>
        <source>Centre and span</source>
        <translation>Centro e ampiezza</translation>
    </message>
    <message>
        <source>&amp;Centre - Hz</source>
        <translation>&amp;Centro - Hz</translation>
    </message>
    <message>
        <source>&amp;Span - Hz</source>
        <translation>&amp;Ampiezza - Hz</translation>
    </message>
    <message>
        <source>Enter the width of the range in Hz</source>
        <translation>Inserire l&apos;ampiezza dell&apos;intervallo in Hz</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Sweep this range</source>
        <translation>Usa questo intervallo</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Enter the centre of the range in Hz</source>
        <translation>Inserire il centro dell&apos;intervallo in Hz</translation>
    </message>
    <message>
        <source>Close without changes</source>
        <translation>Chiude senza modifiche</translation>
    </message>
</context>
<context>
    <name>calvorn::FrmSweep</name>
    <message>
        <source>EXIT</source>
        <translation>ESCI</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>E&amp;sci</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Vista</translation>
    </message>
    <message>
        <source>S&amp;cale</source>
        <translation>&amp;Scala</translation>
    </message>
    <message>
        <source>&amp;SetUp</source>
        <translation>&amp;Impostazioni</translation>
    </message>
    <message>
        <source>&amp;Preferences</source>
        <translation>&amp;Preferenze</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aiuto</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Informazioni</translation>
    </message>
    <message>
        <source> : Unknow DDSdevice.</source>
        <translation> : dispositivo DDS sconosciuto.</translation>
    </message>
    <message>
        <source>Supported DDS generators are: AD9850, AD9851, AD9951</source>
        <translation>Generatori DDS supportati: AD9850, AD9851, AD9951</translation>
    </message>
    <message>
        <source> : Unknow ADCdevice.</source>
        <translation> : dispositivo ADC sconosciuto.</translation>
    </message>
    <message>
        <source>Supported ADC are: 8bit, 10bit</source>
        <translation>ADC supportati: 8bit, 10bit</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Alcune impostazioni non sono leggibili.</translation>
    </message>
    <message>
        <source>The settings could not be saved in %1</source>
        <translation>Le impostazioni non sono state salvate in %1</translation>
    </message>
    <message>
        <source>The settings file %1 is not used: %2.</source>
        <translation>Il file delle impostazioni %1 non viene usato: %2.</translation>
    </message>
    <message>
        <source>Last message</source>
        <translation>Ultimo messaggio</translation>
    </message>
    <message>
        <source>S&amp;weep</source>
        <translation>S&amp;weep</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Livello</translation>
    </message>
    <message>
        <source>%1 of %2 samples are outside the detector&apos;s calibrated range</source>
        <translation>%1 campioni su %2 sono fuori dal campo tarato del rivelatore</translation>
    </message>
    <message>
        <source>Save the settings and close the program</source>
        <translation>Salva le impostazioni e chiude il programma</translation>
    </message>
</context>
<context>
    <name>calvorn::GeneratorBox</name>
    <message>
        <source>Generator</source>
        <translation>Generatore</translation>
    </message>
    <message>
        <source>Frequency - Hz</source>
        <translation>Frequenza - Hz</translation>
    </message>
    <message>
        <source>The frequency of the generator in Hz</source>
        <translation>La frequenza del generatore in Hz</translation>
    </message>
    <message>
        <source>&amp;Generator ON</source>
        <translation>&amp;Generatore ON</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>S&amp;cendi</translation>
    </message>
    <message>
        <source>One step down</source>
        <translation>Un passo in giù</translation>
    </message>
    <message>
        <source>U&amp;p</source>
        <translation>Sa&amp;li</translation>
    </message>
    <message>
        <source>One step up</source>
        <translation>Un passo in su</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>Mem&amp;orizza</translation>
    </message>
    <message>
        <source>Memory %1</source>
        <translation>Memoria %1</translation>
    </message>
    <message>
        <source>&amp;Generator OFF</source>
        <translation>&amp;Generatore OFF</translation>
    </message>
    <message>
        <source>The generator is on.</source>
        <translation>Il generatore è acceso.</translation>
    </message>
    <message>
        <source>The generator is off.</source>
        <translation>Il generatore è spento.</translation>
    </message>
    <message>
        <source>St&amp;ep - Hz</source>
        <translation>&amp;Passo - Hz</translation>
    </message>
    <message>
        <source>State of the generator; a sweep, the meter or a setting ends its use as a signal source</source>
        <translation>Stato del generatore; uno sweep, il misuratore o un&apos;impostazione ne terminano l&apos;uso come sorgente di segnale</translation>
    </message>
    <message>
        <source>Switch the generator on or off</source>
        <translation>Accende e spegne il generatore</translation>
    </message>
    <message>
        <source>Step of &quot;Up&quot; and &quot;Down&quot;, in Hz</source>
        <translation>Passo di &quot;Sali&quot; e &quot;Scendi&quot;, in Hz</translation>
    </message>
    <message>
        <source>Stored frequencies: choose one to use it; to store another, type a name and press &quot;Keep&quot;</source>
        <translation>Frequenze memorizzate: sceglierne una per usarla; per memorizzarne un&apos;altra scrivere un nome e premere &quot;Memorizza&quot;</translation>
    </message>
    <message>
        <source>Store the frequency in the selected memory, with the name shown</source>
        <translation>Memorizza la frequenza nella memoria scelta, con il nome indicato</translation>
    </message>
    <message>
        <source>The generator is not in use as a signal source.</source>
        <translation>Il generatore non è in uso come sorgente di segnale.</translation>
    </message>
</context>
<context>
    <name>calvorn::HeightHandle</name>
    <message>
        <source>Height of the view</source>
        <translation>Altezza della vista</translation>
    </message>
    <message>
        <source>Drag to resize the view; double-click to restore its default height</source>
        <translation>Trascinare per ridimensionare la vista; doppio clic per l&apos;altezza predefinita</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpBrowser</name>
    <message>
        <source>Help page</source>
        <translation>Pagina della guida</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpDesk</name>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Sommario</translation>
    </message>
    <message>
        <source>Open the manual</source>
        <translation>Apre il manuale</translation>
    </message>
    <message>
        <source>&amp;This window</source>
        <translation>&amp;Questa finestra</translation>
    </message>
    <message>
        <source>The help file %1 is missing or damaged.</source>
        <translation>Il file della guida %1 manca o è danneggiato.</translation>
    </message>
    <message>
        <source>Help for the active window</source>
        <translation>Guida della finestra attiva</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpResults</name>
    <message>
        <source>Search results</source>
        <translation>Pagine trovate nella guida</translation>
    </message>
    <message>
        <source>No page contains these words.</source>
        <translation>Nessuna pagina contiene queste parole.</translation>
    </message>
</context>
<context>
    <name>calvorn::HelpWindow</name>
    <message>
        <source>Calvorn Help</source>
        <translation>Guida di Calvorn</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Sommario</translation>
    </message>
    <message>
        <source>&amp;Index</source>
        <translation>&amp;Indice</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Cerca</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Avanti</translation>
    </message>
    <message>
        <source>First page</source>
        <translation>Prima pagina</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Help contents</source>
        <translation>Sommario della guida</translation>
    </message>
    <message>
        <source>Search for</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Word to find in the index</source>
        <translation>Parola da cercare nell&apos;indice</translation>
    </message>
    <message>
        <source>Help index</source>
        <translation>Indice della guida</translation>
    </message>
</context>
<context>
    <name>calvorn::InterfacePage</name>
    <message>
        <source>Interface</source>
        <translation>Interfaccia</translation>
    </message>
    <message>
        <source>PI&amp;C 16F877 board on USB</source>
        <translation>Scheda PI&amp;C 16F877 su USB</translation>
    </message>
    <message>
        <source>DDS/DAC &amp;board on the parallel port</source>
        <translation>Sche&amp;da DDS/DAC sulla porta parallela</translation>
    </message>
    <message>
        <source>&amp;MiniVNA on USB</source>
        <translation>&amp;MiniVNA su USB</translation>
    </message>
    <message>
        <source>A generator and detector with a microcontroller, on a serial port (COM)</source>
        <translation>Generatore e rivelatore con microcontrollore, su porta seriale (COM)</translation>
    </message>
    <message>
        <source>A generator and detector on a parallel port (LPT), with two auxiliary outputs</source>
        <translation>Generatore e rivelatore su porta parallela (LPT), con due uscite ausiliarie</translation>
    </message>
    <message>
        <source>The vector analyser for 0.1 to 180 MHz, on a serial port (COM)</source>
        <translation>L&apos;analizzatore vettoriale da 0,1 a 180 MHz, su porta seriale (COM)</translation>
    </message>
    <message>
        <source>Default &amp;1</source>
        <translation>Predefinita &amp;1</translation>
    </message>
    <message>
        <source>Default &amp;2</source>
        <translation>Predefinita &amp;2</translation>
    </message>
    <message>
        <source>Default &amp;3</source>
        <translation>Predefinita &amp;3</translation>
    </message>
    <message>
        <source>Default configuration: %1</source>
        <translation>Configurazione predefinita: %1</translation>
    </message>
    <message>
        <source>Without hardware: choose any interface, then a simulated board on the &quot;Ports&quot; page: LPT0 for the parallel port, COM100 for the two others.</source>
        <translation>Senza hardware: scegliere un&apos;interfaccia, poi una scheda simulata nella pagina &quot;Porte&quot;: LPT0 per la porta parallela, COM100 per le altre due.</translation>
    </message>
    <message>
        <source>Sorry, default value not found.</source>
        <translation>Spiacente, valori predefiniti non trovati.</translation>
    </message>
    <message>
        <source>Default value for PIC not found.</source>
        <translation>Valori predefiniti per il PIC non trovati.</translation>
    </message>
    <message>
        <source>Default value for DDS/DAC connencted to LPT not found.</source>
        <translation>Valori predefiniti per la scheda DDS/DAC su LPT non trovati.</translation>
    </message>
    <message>
        <source>Default value for MiniVNA not found.</source>
        <translation>Valori predefiniti per il MiniVNA non trovati.</translation>
    </message>
    <message>
        <source>Some settings could not be read.</source>
        <translation>Alcune impostazioni non sono leggibili.</translation>
    </message>
    <message>
        <source>Choosing an interface loads its prepared configuration.</source>
        <translation>Scegliendo un&apos;interfaccia si carica la sua configurazione predefinita.</translation>
    </message>
    <message>
        <source>Choose this interface and load its prepared configuration, discarding all changes</source>
        <translation>Sceglie questa interfaccia e carica la sua configurazione predefinita, annullando le modifiche</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelBox</name>
    <message>
        <source>Level</source>
        <translation>Livello</translation>
    </message>
    <message>
        <source>Atten&amp;uator - dB</source>
        <translation>Attenuatore - &amp;dB</translation>
    </message>
    <message>
        <source>The level at the input, into 50 ohms</source>
        <translation>Il livello all&apos;ingresso, su 50 ohm</translation>
    </message>
    <message>
        <source>Volts RMS at the input</source>
        <translation>Volt efficaci all&apos;ingresso</translation>
    </message>
    <message>
        <source>Power into 50 ohms</source>
        <translation>Potenza su 50 ohm</translation>
    </message>
    <message>
        <source>The lowest and the highest level so far</source>
        <translation>Il livello più basso e il più alto finora</translation>
    </message>
    <message>
        <source>From -80 to 20 dBm</source>
        <translation>Da -80 a 20 dBm</translation>
    </message>
    <message>
        <source>&amp;Zero</source>
        <translation>A&amp;zzera</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>da %1 a %2</translation>
    </message>
    <message>
        <source>At full scale: the level may be higher.</source>
        <translation>A fondo scala: il livello può essere più alto.</translation>
    </message>
    <message>
        <source>H&amp;old</source>
        <translation>&amp;Blocca</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Ricomincia</translation>
    </message>
    <message>
        <source>Loss of an attenuator in front of the detector; it is added to the level</source>
        <translation>Attenuazione davanti al rivelatore; viene sommata al livello</translation>
    </message>
    <message>
        <source>Outside the detector&apos;s calibrated range.</source>
        <translation>Fuori dal campo tarato del rivelatore.</translation>
    </message>
    <message>
        <source>Below the detector&apos;s floor.</source>
        <translation>Sotto il minimo del rivelatore.</translation>
    </message>
    <message>
        <source>Reset minimum and maximum</source>
        <translation>Azzera minimo e massimo</translation>
    </message>
    <message>
        <source>Relative to the level when you pressed &quot;Zero&quot;</source>
        <translation>Rispetto al livello al quale si è premuto &quot;Azzera&quot;</translation>
    </message>
    <message>
        <source>Warning about the reading</source>
        <translation>Avviso sulla lettura</translation>
    </message>
    <message>
        <source>Stop the meter and keep its readings</source>
        <translation>Ferma il misuratore; i numeri restano come sono</translation>
    </message>
    <message>
        <source>Use the current level as 0 dB</source>
        <translation>Usa il livello attuale come 0 dB</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelCurve</name>
    <message>
        <source>The detector&apos;s voltage against the level; below it, the error of the law at each point</source>
        <translation>La tensione del rivelatore in funzione del livello; sotto, l&apos;errore della legge in ogni punto</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelPage</name>
    <message>
        <source>The hardware is not connected.</source>
        <translation>L&apos;hardware non è collegato.</translation>
    </message>
    <message>
        <source>The instrument measures the phase: choose RetLoss or DUT.</source>
        <translation>Lo strumento misura la fase: scegliere RetLoss o DUT.</translation>
    </message>
    <message>
        <source>A sweep is running: the meter continues afterwards.</source>
        <translation>Uno sweep è in corso: il misuratore riprende quando è finito.</translation>
    </message>
    <message>
        <source>The generator is on: this interface reads the detector only during sweeps.</source>
        <translation>Il generatore è acceso: questa interfaccia può leggere il rivelatore solo con scansioni.</translation>
    </message>
</context>
<context>
    <name>calvorn::LevelReader</name>
    <message>
        <source>The board returned no reading.</source>
        <translation>La scheda non fornisce letture.</translation>
    </message>
</context>
<context>
    <name>calvorn::LimitsPage</name>
    <message>
        <source>Verdict on the last sweep</source>
        <translation>Giudizio sull&apos;ultimo sweep</translation>
    </message>
    <message>
        <source>&amp;Zero</source>
        <translation>A&amp;zzera</translation>
    </message>
    <message>
        <source>Points of the limits</source>
        <translation>Punti dei limiti</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Upper</source>
        <translation>Superiore</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Inferiore</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>A&amp;ggiungi</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>T&amp;ogli</translation>
    </message>
    <message>
        <source>By clic&amp;k</source>
        <translation>&amp;Con un clic</translation>
    </message>
    <message>
        <source>upper</source>
        <translation>superiore</translation>
    </message>
    <message>
        <source>lower</source>
        <translation>inferiore</translation>
    </message>
    <message>
        <source>L&amp;ive ±</source>
        <translation>Attual&amp;e ±</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>Margin between the limits and the sweep</source>
        <translation>Distanza dei limiti dallo sweep</translation>
    </message>
    <message>
        <source>&amp;Load…</source>
        <translation>Ca&amp;rica…</translation>
    </message>
    <message>
        <source>Sav&amp;e…</source>
        <translation>Sa&amp;lva…</translation>
    </message>
    <message>
        <source>PASS</source>
        <translation>SUPERATO</translation>
    </message>
    <message>
        <source>FAIL</source>
        <translation>NO</translation>
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
        <translation>Sotto la soglia del rivelatore a %1 Hz</translation>
    </message>
    <message>
        <source>Nearest: %1 %2 inside, at %3 Hz</source>
        <translation>Più vicino: %1 %2 dentro, a %3 Hz</translation>
    </message>
    <message>
        <source>Worst: %1 %2 outside, at %3 Hz</source>
        <translation>Peggiore: %1 %2 fuori, a %3 Hz</translation>
    </message>
    <message>
        <source>%1 passed, %2 failed</source>
        <translation>%1 superati, %2 no</translation>
    </message>
    <message>
        <source>Limits (*.csv)</source>
        <translation>Limiti (*.csv)</translation>
    </message>
    <message>
        <source>Check ever&amp;y sweep</source>
        <translation>Verifica &amp;di ogni sweep</translation>
    </message>
    <message>
        <source>Draw the limits and show whether each sweep is within them</source>
        <translation>Disegna i limiti e dice se ogni sweep li rispetta</translation>
    </message>
    <message>
        <source>&amp;Beep on change</source>
        <translation>S&amp;uono al cambiamento</translation>
    </message>
    <message>
        <source>Beep when the verdict changes between PASS and FAIL</source>
        <translation>Suona quando il giudizio passa da PASS a FAIL o viceversa</translation>
    </message>
    <message>
        <source>Reset the counts</source>
        <translation>Azzera i conteggi</translation>
    </message>
    <message>
        <source>Add a point at M1, at the level of M3</source>
        <translation>Aggiunge un punto a M1, al livello di M3</translation>
    </message>
    <message>
        <source>Remove the selected points</source>
        <translation>Toglie i punti scelti</translation>
    </message>
    <message>
        <source>Each click in the graph adds a point to this limit</source>
        <translation>Ogni clic nel grafico aggiunge un punto a questo limite</translation>
    </message>
    <message>
        <source>The limit to which new points are added</source>
        <translation>Il limite al quale si aggiungono i nuovi punti</translation>
    </message>
    <message>
        <source>Create both limits from the current sweep</source>
        <translation>Ricava i due limiti dallo sweep mostrato</translation>
    </message>
    <message>
        <source>Load limits from a file</source>
        <translation>Carica i limiti da un file</translation>
    </message>
    <message>
        <source>Save the limits to a file</source>
        <translation>Salva i limiti in un file</translation>
    </message>
    <message>
        <source>Limits (*.csv);;All files (*)</source>
        <translation>Limiti (*.csv);;Tutti i file (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::LogList</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copia</translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation>Seleziona &amp;tutto</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Salva…</translation>
    </message>
    <message>
        <source>the log list is full</source>
        <translation>il log è pieno</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>File di testo (*.txt);;Tutti i file (*)</translation>
    </message>
    <message>
        <source>log</source>
        <translation>registro</translation>
    </message>
</context>
<context>
    <name>calvorn::LptDriver</name>
    <message>
        <source>Parallel port not initialized.</source>
        <translation>Porta parallela non inizializzata.</translation>
    </message>
    <message>
        <source>Driver not found or wrong LPT address.</source>
        <translation>Driver non trovato o indirizzo LPT errato.</translation>
    </message>
    <message>
        <source>Please verify &apos;SetUp/Configuration/Ports&apos;.</source>
        <translation>Verificare &apos;Impostazioni/Configurazione/Porte&apos;.</translation>
    </message>
    <message>
        <source>Start/step sweep reinizializzati</source>
        <translation>Inizio e passo dello sweep reinizializzati</translation>
    </message>
    <message>
        <source>No sweep is running.</source>
        <translation>Nessuno sweep in corso.</translation>
    </message>
    <message>
        <source>Unknown generator chip: %1</source>
        <translation>Chip del generatore sconosciuto: %1</translation>
    </message>
    <message>
        <source>Unknown detector converter: %1</source>
        <translation>Convertitore del rivelatore sconosciuto: %1</translation>
    </message>
    <message>
        <source>Unknown sweep speed: %1</source>
        <translation>Velocità di sweep sconosciuta: %1</translation>
    </message>
    <message>
        <source>The parallel port is not open.</source>
        <translation>La porta parallela non è aperta.</translation>
    </message>
    <message>
        <source>Unknown auxiliary output: %1</source>
        <translation>Uscita ausiliaria sconosciuta: %1</translation>
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
        <translation>non usato</translation>
    </message>
    <message>
        <source>, inverted by the board</source>
        <translation>, invertito dalla scheda</translation>
    </message>
    <message>
        <source>Pins of the parallel port</source>
        <translation>Pin della porta parallela</translation>
    </message>
</context>
<context>
    <name>calvorn::LptPinWindow</name>
    <message>
        <source>Pins of the parallel port</source>
        <translation>Pin della porta parallela</translation>
    </message>
    <message>
        <source>With this wiring the port cannot be opened. Correct the settings file.</source>
        <translation>Con questo cablaggio la porta non si può aprire. Correggere il file di impostazioni.</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Chiudi</translation>
    </message>
    <message>
        <source>The plug of the board&apos;s cable, viewed from the pin side. Green: to the board; blue: from the board; &quot;!&quot;: inverted by the board. To change the wiring, edit the section [LPT Wiring] of the settings file.</source>
        <translation>Il connettore del cavo della scheda, visto dal lato dei pin. Verde: verso la scheda; blu: dalla scheda; &quot;!&quot;: invertito dalla scheda. Si cambia nella sezione [LPT Wiring] del file di impostazioni.</translation>
    </message>
</context>
<context>
    <name>calvorn::MarkerPanel</name>
    <message>
        <source>Enter freq in Hz or ClickLeft the graph</source>
        <translation>Scrivere la frequenza in Hz o fare clic sinistro sul grafico</translation>
    </message>
    <message>
        <source>Frequency of M1 in Hz</source>
        <translation>Frequenza di M1 in Hz</translation>
    </message>
    <message>
        <source>Enter freq in Hz or ClickRight the graph</source>
        <translation>Scrivere la frequenza in Hz o fare clic destro sul grafico</translation>
    </message>
    <message>
        <source>Frequency of M2 in Hz</source>
        <translation>Frequenza di M2 in Hz</translation>
    </message>
    <message>
        <source>Enter volt/dB or SHIFT+ ClickLeft the graph</source>
        <translation>Scrivere volt/dB o fare MAIUSC + clic sinistro sul grafico</translation>
    </message>
    <message>
        <source>Amplitude of M3</source>
        <translation>Ampiezza di M3</translation>
    </message>
    <message>
        <source>Enter volt/dB or SHIFT ClickRight the graph</source>
        <translation>Scrivere volt/dB o fare MAIUSC + clic destro sul grafico</translation>
    </message>
    <message>
        <source>Amplitude of M4</source>
        <translation>Ampiezza di M4</translation>
    </message>
    <message>
        <source>Amplitude of the curve at M1</source>
        <translation>Ampiezza della curva in M1</translation>
    </message>
    <message>
        <source>Amplitude at M1</source>
        <translation>Ampiezza in M1</translation>
    </message>
    <message>
        <source>Amplitude of the curve at M2</source>
        <translation>Ampiezza della curva in M2</translation>
    </message>
    <message>
        <source>Amplitude at M2</source>
        <translation>Ampiezza in M2</translation>
    </message>
    <message>
        <source>Distance of M1 and M2 in Hz</source>
        <translation>Distanza fra M1 e M2 in Hz</translation>
    </message>
    <message>
        <source>M2 - M1 in Hz</source>
        <translation>M2 - M1 in Hz</translation>
    </message>
    <message>
        <source>Difference of M4 and M3</source>
        <translation>Differenza fra M4 e M3</translation>
    </message>
    <message>
        <source>M4 - M3</source>
        <translation>M4 - M3</translation>
    </message>
    <message>
        <source>Frequency under the mouse in Hz</source>
        <translation>Frequenza sotto il mouse in Hz</translation>
    </message>
    <message>
        <source>Frequency under the mouse</source>
        <translation>Frequenza sotto il mouse</translation>
    </message>
    <message>
        <source>Amplitude under the mouse</source>
        <translation>Ampiezza sotto il mouse</translation>
    </message>
    <message>
        <source>M1 -&gt; Start</source>
        <translation>M1 -&gt; Inizio</translation>
    </message>
    <message>
        <source>Sweep from the frequency of M1</source>
        <translation>Sweep a partire dalla frequenza di M1</translation>
    </message>
    <message>
        <source>M2 -&gt; Stop</source>
        <translation>M2 -&gt; Fine</translation>
    </message>
    <message>
        <source>Sweep up to the frequency of M2</source>
        <translation>Sweep fino alla frequenza di M2</translation>
    </message>
    <message>
        <source>Volt</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Unit of the amplitudes</source>
        <translation>Unità delle ampiezze</translation>
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
        <translation>Cursore</translation>
    </message>
</context>
<context>
    <name>calvorn::MeasureDock</name>
    <message>
        <source>Measure</source>
        <translation>Misura</translation>
    </message>
    <message>
        <source>M&amp;easure</source>
        <translation>Mis&amp;ura</translation>
    </message>
    <message>
        <source>Traces</source>
        <translation>Tracce</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Risultati</translation>
    </message>
    <message>
        <source>Limits</source>
        <translation>Limiti</translation>
    </message>
    <message>
        <source>&amp;Normalise</source>
        <translation>&amp;Normalizza</translation>
    </message>
    <message>
        <source>More pages</source>
        <translation>Altre pagine</translation>
    </message>
    <message>
        <source>Stored traces, results, limits, level meter and generator</source>
        <translation>Tracce memorizzate, risultati, limiti, misuratore di livello e generatore</translation>
    </message>
    <message>
        <source>Use the current sweep as the reference and show the curves relative to it. The table keeps the measured values.</source>
        <translation>Usa lo sweep attuale come riferimento e mostra le curve rispetto a esso. La tabella conserva i valori misurati.</translation>
    </message>
    <message>
        <source>Put the panel back into the window</source>
        <translation>Rimette il pannello nella finestra</translation>
    </message>
    <message>
        <source>Dock</source>
        <translation>Aggancia</translation>
    </message>
</context>
<context>
    <name>calvorn::Measurement</name>
    <message>
        <source>Gaps: the reference is below the detector&apos;s floor.</source>
        <translation>Lacune: il riferimento è sotto la soglia del rivelatore.</translation>
    </message>
    <message>
        <source>There are no limits.</source>
        <translation>Non ci sono limiti.</translation>
    </message>
    <message>
        <source>There is no sweep yet.</source>
        <translation>Non c&apos;è ancora uno sweep.</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Attuale</translation>
    </message>
    <message>
        <source>Average of %1</source>
        <translation>Media di %1</translation>
    </message>
    <message>
        <source>Max hold</source>
        <translation>Massimi</translation>
    </message>
    <message>
        <source>Min hold</source>
        <translation>Minimi</translation>
    </message>
    <message>
        <source>relative to the reference</source>
        <translation>rispetto al riferimento</translation>
    </message>
    <message>
        <source>Live, relative</source>
        <translation>Attuale, relativo</translation>
    </message>
    <message>
        <source>Upper limit</source>
        <translation>Limite superiore</translation>
    </message>
    <message>
        <source>Lower limit</source>
        <translation>Limite inferiore</translation>
    </message>
    <message>
        <source>Gaps: the reference has no data there, or is below the detector&apos;s floor.</source>
        <translation>Lacune: il riferimento non arriva fin lì o è sotto la soglia del rivelatore.</translation>
    </message>
    <message>
        <source>Gaps: the reference has no data there.</source>
        <translation>Lacune: il riferimento non arriva fin lì.</translation>
    </message>
    <message>
        <source>These limits are in volts: choose the linear scale, without a reference.</source>
        <translation>Questi limiti sono in volt: scegliere la scala lineare, senza riferimento.</translation>
    </message>
    <message>
        <source>These limits are in dB: choose a dB scale, without a reference.</source>
        <translation>Questi limiti sono in dB: scegliere una scala in dB, senza riferimento.</translation>
    </message>
    <message>
        <source>These limits are in dB relative to a reference: choose a dB scale, and press &quot;Normalise&quot;.</source>
        <translation>Questi limiti sono in dB rispetto a un riferimento: scegliere una scala in dB e premere &quot;Normalizza&quot;.</translation>
    </message>
    <message>
        <source>The limits do not cover any sample.</source>
        <translation>I limiti non coprono nessun campione.</translation>
    </message>
</context>
<context>
    <name>calvorn::PicDriver</name>
    <message>
        <source>DDS not initialized</source>
        <translation>DDS non inizializzato</translation>
    </message>
    <message>
        <source>Verify the serial interface.</source>
        <translation>Verificare l&apos;interfaccia seriale.</translation>
    </message>
    <message>
        <source>Errore inizializza ciclo sweep</source>
        <translation>Errore nell&apos;inizializzare il ciclo di sweep</translation>
    </message>
    <message>
        <source>Frequency not iniatized.</source>
        <translation>Frequenza non inizializzata.</translation>
    </message>
    <message>
        <source>DDS frequency not initialized</source>
        <translation>Frequenza del DDS non inizializzata</translation>
    </message>
    <message>
        <source>Start frequency not initialized</source>
        <translation>Frequenza iniziale non inizializzata</translation>
    </message>
    <message>
        <source>Step frequency not initialized</source>
        <translation>Passo di frequenza non inizializzato</translation>
    </message>
    <message>
        <source>The board does not answer.</source>
        <translation>La scheda non risponde.</translation>
    </message>
    <message>
        <source>The board did not start the sweep.</source>
        <translation>La scheda non avvia lo sweep.</translation>
    </message>
    <message>
        <source>The board does not know the command &quot;%1&quot;.</source>
        <translation>La scheda non conosce il comando &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>The board did not identify itself: &quot;%1&quot;.</source>
        <translation>La scheda non si è identificata: &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>The board does not support a settling time of %1 µs.</source>
        <translation>La scheda non supporta un tempo di assestamento di %1 µs.</translation>
    </message>
    <message>
        <source>A sweep from the board was damaged during transmission.</source>
        <translation>Uno sweep della scheda è arrivato danneggiato.</translation>
    </message>
    <message>
        <source>The board no longer delivers valid sweeps; the sweep ends.</source>
        <translation>La scheda non fornisce più sweep validi; lo sweep finisce.</translation>
    </message>
</context>
<context>
    <name>calvorn::PortPage</name>
    <message>
        <source>Ports</source>
        <translation>Porte</translation>
    </message>
    <message>
        <source>Serial port (PIC, MiniVNA)</source>
        <translation>Porta seriale (PIC, MiniVNA)</translation>
    </message>
    <message>
        <source>COMx</source>
        <translation>COMx</translation>
    </message>
    <message>
        <source>Number of the serial port</source>
        <translation>Numero della porta seriale</translation>
    </message>
    <message>
        <source>LPT0 simulated (0x000)</source>
        <translation>LPT0, simulata (0x000)</translation>
    </message>
    <message>
        <source>LPT1, port 888 (0x378)</source>
        <translation>LPT1, porta 888 (0x378)</translation>
    </message>
    <message>
        <source>LPT2, port 632 (0x278)</source>
        <translation>LPT2, porta 632 (0x278)</translation>
    </message>
    <message>
        <source>LPT3, port 956 (0x3BC)</source>
        <translation>LPT3, porta 956 (0x3BC)</translation>
    </message>
    <message>
        <source>LPTx, port</source>
        <translation>LPTx, porta</translation>
    </message>
    <message>
        <source>Parallel port (DDS/DAC board)</source>
        <translation>Porta parallela (scheda DDS/DAC)</translation>
    </message>
    <message>
        <source>Base address of the parallel port, decimal, up to 65535</source>
        <translation>Indirizzo base della porta parallela, decimale, fino a 65535</translation>
    </message>
    <message>
        <source>Address of the parallel port</source>
        <translation>Indirizzo della porta parallela</translation>
    </message>
    <message>
        <source>The same address, hexadecimal</source>
        <translation>Lo stesso indirizzo, esadecimale</translation>
    </message>
    <message>
        <source>Pins of the &amp;board...</source>
        <translation>Pin della sc&amp;heda...</translation>
    </message>
    <message>
        <source>Show which pin of the port carries which signal</source>
        <translation>Mostra quale pin della porta porta quale segnale</translation>
    </message>
    <message>
        <source>COM%1</source>
        <translation>COM%1</translation>
    </message>
    <message>
        <source> NOT available</source>
        <translation> NON disponibile</translation>
    </message>
    <message>
        <source>COM%1: a simulated board</source>
        <translation>COM%1: una scheda simulata</translation>
    </message>
    <message>
        <source>Number of the port; %1 is a simulated board</source>
        <translation>Numero della porta; %1 è una scheda simulata</translation>
    </message>
    <message>
        <source>simulated board</source>
        <translation>scheda simulata</translation>
    </message>
    <message>
        <source>no device</source>
        <translation>nessun dispositivo</translation>
    </message>
    <message>
        <source>no known port</source>
        <translation>nessuna porta nota</translation>
    </message>
    <message>
        <source>Access &amp;rule...</source>
        <translation>Re&amp;gola di accesso...</translation>
    </message>
    <message>
        <source>Save a udev rule that lets the user at this computer open the board</source>
        <translation>Salva una regola udev che permette all&apos;utente di questo computer di aprire la scheda</translation>
    </message>
    <message>
        <source>The port with this number; %1 is a simulated board</source>
        <translation>La porta con questo numero; %1 è una scheda simulata</translation>
    </message>
    <message>
        <source>Shows whether a port with this number exists</source>
        <translation>Dice se una porta con questo numero esiste</translation>
    </message>
    <message>
        <source>This number has no device. You can assign one in the [Ports] section of the settings file.</source>
        <translation>A questo numero non corrisponde alcun dispositivo. Si può assegnarne uno nella sezione [Ports] del file di impostazioni.</translation>
    </message>
    <message>
        <source>Available when a connected USB board is selected</source>
        <translation>Disponibile quando è scelta una scheda USB collegata</translation>
    </message>
    <message>
        <source>A simulated board, to use the program without hardware</source>
        <translation>Una scheda simulata, per usare il programma senza hardware</translation>
    </message>
    <message>
        <source>The system knows no port at this address</source>
        <translation>Il sistema non conosce alcuna porta a questo indirizzo</translation>
    </message>
    <message>
        <source>A port at this address, for instance on a card</source>
        <translation>Una porta a questo indirizzo, per esempio di una scheda in uno slot</translation>
    </message>
    <message>
        <source>Rules for udev (*.rules);;All files (*)</source>
        <translation>Regole di udev (*.rules);;Tutti i file (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::RangeEntry</name>
    <message>
        <source>Start Frequency - Hz</source>
        <translation>Frequenza iniziale - Hz</translation>
    </message>
    <message>
        <source>Enter the start frequency in Hz</source>
        <translation>Scrivere la frequenza iniziale in Hz</translation>
    </message>
    <message>
        <source>Stop Frequency - Hz</source>
        <translation>Frequenza finale - Hz</translation>
    </message>
    <message>
        <source>Enter the stop frequency in Hz</source>
        <translation>Scrivere la frequenza finale in Hz</translation>
    </message>
    <message>
        <source>Distance between two samples in Hz</source>
        <translation>Distanza fra due campioni in Hz</translation>
    </message>
    <message>
        <source>Step in Hz</source>
        <translation>Passo in Hz</translation>
    </message>
    <message>
        <source>Step - Hz</source>
        <translation>Passo - Hz</translation>
    </message>
    <message>
        <source>Number of samples in the range</source>
        <translation>Numero di campioni nell&apos;intervallo</translation>
    </message>
    <message>
        <source>Minimum sweeping range is </source>
        <translation>L&apos;intervallo minimo di sweep è </translation>
    </message>
    <message>
        <source>N.Campioni </source>
        <translation>N. campioni </translation>
    </message>
</context>
<context>
    <name>calvorn::ReadOut</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copia</translation>
    </message>
</context>
<context>
    <name>calvorn::RemoteControl</name>
    <message>
        <source>SCPI: port %1, clients: %2</source>
        <translation>SCPI %1, client: %2</translation>
    </message>
    <message>
        <source>SCPI: port %1</source>
        <translation>SCPI: porta %1</translation>
    </message>
</context>
<context>
    <name>calvorn::ResultsPage</name>
    <message>
        <source>Filter</source>
        <translation>Filtro</translation>
    </message>
    <message>
        <source>Notch</source>
        <translation>Notch</translation>
    </message>
    <message>
        <source>Crystal</source>
        <translation>Quarzo</translation>
    </message>
    <message>
        <source>Match with a bridge</source>
        <translation>Adattamento con un ponte</translation>
    </message>
    <message>
        <source>&amp;Results of</source>
        <translation>&amp;Risultati di</translation>
    </message>
    <message>
        <source>Live sweep</source>
        <translation>Sweep attuale</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>Fr&amp;om</source>
        <translation>&amp;Da</translation>
    </message>
    <message>
        <source> Ω</source>
        <translation> Ω</translation>
    </message>
    <message>
        <source>Fi&amp;xture</source>
        <translation>S&amp;upporto</translation>
    </message>
    <message>
        <source>&amp;Peak</source>
        <translation>&amp;Picco</translation>
    </message>
    <message>
        <source>M&amp;inimum</source>
        <translation>Minim&amp;o</translation>
    </message>
    <message>
        <source>◀ Peak</source>
        <translation>◀ Picco</translation>
    </message>
    <message>
        <source>Peak ▶</source>
        <translation>Picco ▶</translation>
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
        <translation>Di quanto un picco deve superare le valli ai due lati</translation>
    </message>
    <message>
        <source>M1 tr&amp;acks the peak</source>
        <translation>M1 se&amp;gue il picco</translation>
    </message>
    <message>
        <source>Peaks of at &amp;least</source>
        <translation>Picchi di a&amp;lmeno</translation>
    </message>
    <message>
        <source>At M1</source>
        <translation>A M1</translation>
    </message>
    <message>
        <source>At M2</source>
        <translation>A M2</translation>
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
        <translation>Tipo di dispositivo</translation>
    </message>
    <message>
        <source>The curve used for the results</source>
        <translation>La curva usata per i risultati</translation>
    </message>
    <message>
        <source>Resistance of the fixture&apos;s source and load (same value for both)</source>
        <translation>Resistenza di sorgente e carico del supporto (uguale per entrambi)</translation>
    </message>
    <message>
        <source>Move M1 to the highest point</source>
        <translation>Sposta M1 sul punto più alto</translation>
    </message>
    <message>
        <source>Move M1 to the lowest point</source>
        <translation>Sposta M1 sul punto più basso</translation>
    </message>
    <message>
        <source>Move M1 to the next peak on the left</source>
        <translation>Sposta M1 sul picco successivo a sinistra</translation>
    </message>
    <message>
        <source>Move M1 to the next peak on the right</source>
        <translation>Sposta M1 sul picco successivo a destra</translation>
    </message>
    <message>
        <source>Move M1 and M2 to the −3 dB points</source>
        <translation>Sposta M1 e M2 sui punti a −3 dB</translation>
    </message>
    <message>
        <source>Move M1 and M2 to the −6 dB points</source>
        <translation>Sposta M1 e M2 sui punti a −6 dB</translation>
    </message>
    <message>
        <source>Move M1 to the highest point after each sweep</source>
        <translation>Dopo ogni sweep sposta M1 sul punto più alto</translation>
    </message>
</context>
<context>
    <name>calvorn::SampleConversion</name>
    <message>
        <source>sample %1 of a sweep</source>
        <translation>campione %1 di uno sweep</translation>
    </message>
</context>
<context>
    <name>calvorn::ScaleControl</name>
    <message>
        <source>&amp;Linear</source>
        <translation>&amp;Lineare</translation>
    </message>
    <message>
        <source>Volts</source>
        <translation>Volt</translation>
    </message>
    <message>
        <source>Logarithmic (&amp;1V)</source>
        <translation>Logaritmica (&amp;1V)</translation>
    </message>
    <message>
        <source>dB referred to 1 V, from 0 dB</source>
        <translation>dB riferiti a 1 V, da 0 dB</translation>
    </message>
    <message>
        <source>L&amp;ogarithmic (1V + 10dB)</source>
        <translation>L&amp;ogaritmica (1V + 10dB)</translation>
    </message>
    <message>
        <source>dB referred to 1 V, from +10 dB</source>
        <translation>dB riferiti a 1 V, da +10 dB</translation>
    </message>
    <message>
        <source>Lo&amp;garithmic (10V)</source>
        <translation>Lo&amp;garitmica (10V)</translation>
    </message>
    <message>
        <source>dB referred to 10 V, from 0 dB</source>
        <translation>dB riferiti a 10 V, da 0 dB</translation>
    </message>
    <message>
        <source>Log&amp;arithmic (10V +10dB)</source>
        <translation>Log&amp;aritmica (10V + 10dB)</translation>
    </message>
    <message>
        <source>dB referred to 10 V, from +10 dB</source>
        <translation>dB riferiti a 10 V, da +10 dB</translation>
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
        <translation>Il controllo remoto non può usare la porta %1 (%2).</translation>
    </message>
    <message>
        <source>port %1</source>
        <translation>porta %1</translation>
    </message>
    <message>
        <source>the Unix socket</source>
        <translation>il socket Unix</translation>
    </message>
    <message>
        <source>Remote control could not create its Unix socket (%1).</source>
        <translation>Il controllo remoto non ha potuto creare il suo socket Unix (%1).</translation>
    </message>
    <message>
        <source>Remote control: rejected the user %1 at %2.</source>
        <translation>Controllo remoto: l&apos;utente %1 (%2) è stato respinto.</translation>
    </message>
    <message>
        <source>Remote control: rejected an unknown user at %1.</source>
        <translation>Controllo remoto: un utente sconosciuto (%1) è stato respinto.</translation>
    </message>
    <message>
        <source>Remote control: rejected a client, because %1 are already connected.</source>
        <translation>Controllo remoto: client respinto, ce ne sono già %1 collegati.</translation>
    </message>
    <message>
        <source>Remote control: disconnected the client at %1, which does not read its responses.</source>
        <translation>Controllo remoto: il client %1 non legge le risposte ed è stato disconnesso.</translation>
    </message>
</context>
<context>
    <name>calvorn::SerialDriver</name>
    <message>
        <source>The serial port is not open.</source>
        <translation>La porta seriale non è aperta.</translation>
    </message>
</context>
<context>
    <name>calvorn::SerialLink</name>
    <message>
        <source>The connection to %1 was lost.</source>
        <translation>Il collegamento con %1 si è interrotto.</translation>
    </message>
    <message>
        <source>The port %1 does not support these line settings.</source>
        <translation>La porta %1 non supporta questi parametri di linea.</translation>
    </message>
</context>
<context>
    <name>calvorn::ServerProcess</name>
    <message>
        <source>no connection to it (%1)</source>
        <translation>nessun collegamento (%1)</translation>
    </message>
    <message>
        <source>%1 could not be started (%2)</source>
        <translation>non è stato possibile avviare %1 (%2)</translation>
    </message>
    <message>
        <source>it has ended</source>
        <translation>è terminato</translation>
    </message>
</context>
<context>
    <name>calvorn::SetUpMenu</name>
    <message>
        <source>&amp;Configuration</source>
        <translation>&amp;Configurazione</translation>
    </message>
    <message>
        <source>Interface, chips, outputs and ports</source>
        <translation>Interfaccia, chip, uscite e porte</translation>
    </message>
    <message>
        <source>Calibrate &amp;generator</source>
        <translation>Taratura &amp;generatore</translation>
    </message>
    <message>
        <source>Calibrate &amp;detector</source>
        <translation>Taratura &amp;rivelatore</translation>
    </message>
    <message>
        <source>Calibrate &amp;level</source>
        <translation>Taratura &amp;livello</translation>
    </message>
    <message>
        <source>Adjust the frequency with a frequency meter</source>
        <translation>Regola la frequenza con un frequenzimetro</translation>
    </message>
    <message>
        <source>Adjust the detector with a known voltage</source>
        <translation>Regola il rivelatore con una tensione nota</translation>
    </message>
    <message>
        <source>Determine the detector&apos;s law from known levels</source>
        <translation>Determina la legge del rivelatore con livelli noti</translation>
    </message>
</context>
<context>
    <name>calvorn::SignalGenerator</name>
    <message>
        <source>A sweep is running: stop it first.</source>
        <translation>Uno sweep è in corso: fermarlo prima.</translation>
    </message>
    <message>
        <source>The hardware is not connected.</source>
        <translation>L&apos;hardware non è collegato.</translation>
    </message>
    <message>
        <source>The board did not accept the frequency.</source>
        <translation>La scheda non ha accettato la frequenza.</translation>
    </message>
</context>
<context>
    <name>calvorn::SpanCommands</name>
    <message>
        <source>&amp;Centre and span…</source>
        <translation>&amp;Centro e ampiezza…</translation>
    </message>
    <message>
        <source>Enter the range as centre and span</source>
        <translation>Inserire l&apos;intervallo come centro e ampiezza</translation>
    </message>
    <message>
        <source>&amp;Previous span</source>
        <translation>Intervallo &amp;precedente</translation>
    </message>
    <message>
        <source>&amp;Next span</source>
        <translation>Intervallo s&amp;uccessivo</translation>
    </message>
    <message>
        <source>&amp;Full range</source>
        <translation>&amp;Intervallo completo</translation>
    </message>
    <message>
        <source>Return to the previous range</source>
        <translation>Torna all&apos;intervallo precedente</translation>
    </message>
    <message>
        <source>Go to the next range</source>
        <translation>Va all&apos;intervallo successivo</translation>
    </message>
    <message>
        <source>Sweep the generator&apos;s full range</source>
        <translation>Sweep su tutto il campo del generatore</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepControls</name>
    <message>
        <source>Sweep speed</source>
        <translation>Velocità di sweep</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Normale</translation>
    </message>
    <message>
        <source>Slow</source>
        <translation>Lenta</translation>
    </message>
    <message>
        <source>Very slow</source>
        <translation>Molto lenta</translation>
    </message>
    <message>
        <source>Fastest sweep</source>
        <translation>Lo sweep più veloce</translation>
    </message>
    <message>
        <source>More settling time at each frequency</source>
        <translation>Più tempo di assestamento a ogni frequenza</translation>
    </message>
    <message>
        <source>Longest settling time, for very sharp filters</source>
        <translation>Assestamento più lungo, per filtri molto stretti</translation>
    </message>
    <message>
        <source>Time of one sweep in milliseconds</source>
        <translation>Durata di uno sweep in millisecondi</translation>
    </message>
    <message>
        <source>Sweeps per second</source>
        <translation>Sweep al secondo</translation>
    </message>
    <message>
        <source>Sweep time - ms</source>
        <translation>Tempo sweep - ms</translation>
    </message>
    <message>
        <source>Sweep ON</source>
        <translation>Avvia sweep</translation>
    </message>
    <message>
        <source>Start sweeping (F5)</source>
        <translation>Avvia lo sweep (F5)</translation>
    </message>
    <message>
        <source>Sweep OFF</source>
        <translation>Ferma sweep</translation>
    </message>
    <message>
        <source>Stop the sweep (F5)</source>
        <translation>Ferma lo sweep (F5)</translation>
    </message>
    <message>
        <source>The minimum sweep range is </source>
        <translation>L&apos;intervallo minimo di sweep è </translation>
    </message>
    <message>
        <source>Stop sweep forzato</source>
        <translation>Stop sweep forzato</translation>
    </message>
    <message>
        <source>&amp;Single sweep</source>
        <translation>Sweep &amp;singolo</translation>
    </message>
    <message>
        <source>Sweep once, then stop; repeated sweeps stop after the next curve</source>
        <translation>Un solo sweep, poi stop; uno sweep in corso si ferma dopo la prossima curva</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepFiles</name>
    <message>
        <source>&amp;Export (.csv)</source>
        <translation>&amp;Esporta (.csv)</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importa</translation>
    </message>
    <message>
        <source>Export: </source>
        <translation>Esporta: </translation>
    </message>
    <message>
        <source>Sweep files (*.csv)</source>
        <translation>File di sweep (*.csv)</translation>
    </message>
    <message>
        <source>Import: </source>
        <translation>Importa: </translation>
    </message>
    <message>
        <source>: it is not a file</source>
        <translation>: non è un file</translation>
    </message>
    <message>
        <source>This file was created with a different ADC step or offset.</source>
        <translation>Questo file è stato creato con un altro passo o offset dell&apos;ADC.</translation>
    </message>
    <message>
        <source>Press OK to adjust amplitude to the current configuration,</source>
        <translation>OK adatta le ampiezze alla configurazione attuale,</translation>
    </message>
    <message>
        <source>CANCEL to keep the original values.</source>
        <translation>ANNULLA mantiene i valori originali.</translation>
    </message>
    <message>
        <source>%1 rows written to %2</source>
        <translation>%1 righe scritte in %2</translation>
    </message>
    <message>
        <source>%1 not exported: %2</source>
        <translation>%1 non esportato: %2</translation>
    </message>
    <message>
        <source>%1 not imported: %2</source>
        <translation>%1 non importato: %2</translation>
    </message>
    <message>
        <source>Export the sweep to a file</source>
        <translation>Esporta lo sweep in un file</translation>
    </message>
    <message>
        <source>Import a sweep from a file</source>
        <translation>Importa uno sweep da un file</translation>
    </message>
    <message>
        <source>%1 rows imported from %2</source>
        <translation>%1 righe importate da %2</translation>
    </message>
    <message>
        <source>the amplitudes are in volts, but the scale is in dB</source>
        <translation>le ampiezze sono in volt, ma la scala è in dB</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepGraph</name>
    <message>
        <source>Sweep graph</source>
        <translation>Grafico dello sweep</translation>
    </message>
    <message>
        <source>Left-click: M1, right-click: M2, with Shift: M3 and M4. Markers can be dragged.
With Ctrl: the wheel zooms, dragging selects the span.
Keyboard: arrow keys move, keys 1 to 4 place a marker.</source>
        <translation>Clic sinistro: M1, destro: M2, con Maiusc: M3 e M4. I marcatori si possono trascinare.
Con Ctrl: la rotella ingrandisce, trascinando si sceglie l&apos;intervallo.
Tastiera: le frecce spostano, i tasti da 1 a 4 mettono un marcatore.</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepPictures</name>
    <message>
        <source>Save pict&amp;ure…</source>
        <translation>Salva imma&amp;gine…</translation>
    </message>
    <message>
        <source>&amp;Copy picture</source>
        <translation>&amp;Copia immagine</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>Stam&amp;pa…</translation>
    </message>
    <message>
        <source>PNG picture (*.png);;SVG drawing (*.svg)</source>
        <translation>Immagine PNG (*.png);;Disegno SVG (*.svg)</translation>
    </message>
    <message>
        <source>sweep</source>
        <translation>sweep</translation>
    </message>
    <message>
        <source>the page cannot be laid out</source>
        <translation>la pagina non si può impaginare</translation>
    </message>
    <message>
        <source>Save the graph with its read-outs as PNG or SVG</source>
        <translation>Scrive il grafico con le letture come PNG o SVG</translation>
    </message>
    <message>
        <source>Copy the graph with its read-outs to the clipboard</source>
        <translation>Copia il grafico con le letture negli appunti</translation>
    </message>
    <message>
        <source>Print the graph with its read-outs, or create a PDF file</source>
        <translation>Stampa il grafico con le letture o crea un file PDF</translation>
    </message>
    <message>
        <source>the printer did not accept the page</source>
        <translation>la stampante non ha accettato la pagina</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepTable</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenza</translation>
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
        <translation>Campione</translation>
    </message>
    <message>
        <source>table row %1, column %2</source>
        <translation>riga %1, colonna %2 della tabella</translation>
    </message>
</context>
<context>
    <name>calvorn::SweepTableView</name>
    <message>
        <source>The 400 samples of the last sweep</source>
        <translation>I 400 campioni dell&apos;ultimo sweep</translation>
    </message>
    <message>
        <source>Sweep table</source>
        <translation>Tabella dello sweep</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Campione</translation>
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
        <translation>Ultimo campione ricevuto: numero e conteggio</translation>
    </message>
    <message>
        <source>Transmission errors counted</source>
        <translation>Errori di trasmissione contati</translation>
    </message>
    <message>
        <source>RX</source>
        <translation>RX</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Errori</translation>
    </message>
    <message>
        <source>DUT</source>
        <translation>DUT</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>F.dds</source>
        <translation>F.dds</translation>
    </message>
    <message>
        <source>F.Start</source>
        <translation>F.inizio</translation>
    </message>
    <message>
        <source>Send the start frequency of the sweep</source>
        <translation>Invia la frequenza iniziale dello sweep</translation>
    </message>
    <message>
        <source>F.Step</source>
        <translation>F.passo</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>Traccia</translation>
    </message>
    <message>
        <source>Draw a curve of random samples, without hardware</source>
        <translation>Traccia una curva di campioni casuali, senza hardware</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Pulisci</translation>
    </message>
    <message>
        <source>Acquisition log; right-click to copy or save it</source>
        <translation>Log dell&apos;acquisizione; clic destro per copiarlo o salvarlo</translation>
    </message>
    <message>
        <source>Mode of the MiniVNA; click for the next mode</source>
        <translation>Modo del MiniVNA; clic per il modo successivo</translation>
    </message>
    <message>
        <source>Restore the buttons if the hardware never ends a sweep</source>
        <translation>Ripristina i pulsanti se l&apos;hardware non finisce mai uno sweep</translation>
    </message>
    <message>
        <source>Set the generator to the start frequency</source>
        <translation>Porta il generatore sulla frequenza iniziale</translation>
    </message>
    <message>
        <source>Send the step of the sweep (PIC only)</source>
        <translation>Invia il passo dello sweep (solo PIC)</translation>
    </message>
    <message>
        <source>Reset the generator and set it to 1 MHz</source>
        <translation>Fa il reset del generatore e lo porta a 1 MHz</translation>
    </message>
    <message>
        <source>Clear the receive box, the curve and the table</source>
        <translation>Svuota la casella di ricezione, la curva e la tabella</translation>
    </message>
</context>
<context>
    <name>calvorn::TracesPage</name>
    <message>
        <source>&amp;Legend in the graph</source>
        <translation>&amp;Legenda nel grafico</translation>
    </message>
    <message>
        <source>Stored traces</source>
        <translation>Tracce conservate</translation>
    </message>
    <message>
        <source>Show this trace in the graph</source>
        <translation>Mostra questa traccia nel grafico</translation>
    </message>
    <message>
        <source>Show trace %1</source>
        <translation>Mostra la traccia %1</translation>
    </message>
    <message>
        <source>Name of the trace in the legend</source>
        <translation>Nome della traccia nella legenda</translation>
    </message>
    <message>
        <source>Name of trace %1</source>
        <translation>Nome della traccia %1</translation>
    </message>
    <message>
        <source>Store %1</source>
        <translation>Conserva %1</translation>
    </message>
    <message>
        <source>Load, save or remove trace %1</source>
        <translation>Carica, salva o toglie la traccia %1</translation>
    </message>
    <message>
        <source>&amp;Load…</source>
        <translation>&amp;Carica…</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Salva…</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Togli</translation>
    </message>
    <message>
        <source>Ma&amp;x hold</source>
        <translation>Valori ma&amp;x</translation>
    </message>
    <message>
        <source>Keep the highest amplitude at each frequency</source>
        <translation>Tiene l&apos;ampiezza più alta a ogni frequenza</translation>
    </message>
    <message>
        <source>M&amp;in hold</source>
        <translation>Val&amp;ori min</translation>
    </message>
    <message>
        <source>Keep the lowest amplitude at each frequency</source>
        <translation>Tiene l&apos;ampiezza più bassa a ogni frequenza</translation>
    </message>
    <message>
        <source>&amp;Average over</source>
        <translation>M&amp;edia su</translation>
    </message>
    <message>
        <source>Sweeps in the average</source>
        <translation>Sweep nella media</translation>
    </message>
    <message>
        <source>Sweeps averaged so far</source>
        <translation>Sweep mediati finora</translation>
    </message>
    <message>
        <source>Trace %1</source>
        <translation>Traccia %1</translation>
    </message>
    <message>
        <source>Sweep files (*.csv)</source>
        <translation>File di sweep (*.csv)</translation>
    </message>
    <message>
        <source>%1 so far</source>
        <translation>%1 finora</translation>
    </message>
    <message>
        <source>Label the curves if more than one is shown</source>
        <translation>Dà un nome alle curve se ce n&apos;è più di una</translation>
    </message>
    <message>
        <source>Store the current sweep as trace %1</source>
        <translation>Memorizza lo sweep attuale come traccia %1</translation>
    </message>
    <message>
        <source>Following sweeps</source>
        <translation>Sweep seguenti</translation>
    </message>
    <message>
        <source>The mean of this many sweeps, then an exponential running mean</source>
        <translation>La media di questo numero di sweep, poi una media mobile esponenziale</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>&amp;Ricomincia</translation>
    </message>
    <message>
        <source>Restart holds and average with the next sweep, as a new range does</source>
        <translation>Massimi, minimi e media ripartono con il prossimo sweep, come con un nuovo intervallo</translation>
    </message>
    <message>
        <source>Sweep files (*.csv);;All files (*)</source>
        <translation>File di sweep (*.csv);;Tutti i file (*)</translation>
    </message>
</context>
<context>
    <name>calvorn::ViewSwitch</name>
    <message>
        <source>&amp;Marker</source>
        <translation>&amp;Marcatori</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabella</translation>
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
        <translation>Mostra la vista &quot;%1&quot;</translation>
    </message>
    <message>
        <source>View %1</source>
        <translation>Vista %1</translation>
    </message>
</context>
<context>
    <name>calvorn::VnaDriver</name>
    <message>
        <source>Angle</source>
        <translation>Angolo</translation>
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
        <translation>Modo di misura sconosciuto: %1</translation>
    </message>
    <message>
        <source>A sweep has 400 samples, not %1.</source>
        <translation>Uno sweep ha 400 campioni, non %1.</translation>
    </message>
    <message>
        <source>The MiniVNA does not answer.</source>
        <translation>Il MiniVNA non risponde.</translation>
    </message>
    <message>
        <source>A sweep of the MiniVNA was damaged or incomplete.</source>
        <translation>Uno sweep del MiniVNA è arrivato danneggiato o incompleto.</translation>
    </message>
    <message>
        <source>The MiniVNA failed to deliver three sweeps in a row; the sweep ends.</source>
        <translation>Il MiniVNA ha mancato tre sweep di fila; lo sweep finisce.</translation>
    </message>
    <message>
        <source>The MiniVNA is designed for 0.1 to 180 MHz; the frequency is set as requested.</source>
        <translation>Il MiniVNA è fatto per 0,1...180 MHz; la frequenza è impostata come richiesto.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>The program is already running</source>
        <translation>Il programma è già in esecuzione</translation>
    </message>
    <message>
        <source>Measures filters, antennas and other devices over a range of frequencies.</source>
        <translation>Misura filtri, antenne e altri dispositivi su un campo di frequenze.</translation>
    </message>
    <message>
        <source>Calvorn needs a display, but cannot open one. Start it on a desktop, or use calvorn-sweep.</source>
        <translation>Calvorn ha bisogno di uno schermo, ma non è possibile aprirne nessuno. Avviarlo da un desktop oppure usare calvorn-sweep.</translation>
    </message>
    <message>
        <source>The settings folder %1 could not be created</source>
        <translation>Impossibile creare la cartella %1 per le impostazioni</translation>
    </message>
    <message>
        <source>Calvorn opens no files: %1</source>
        <translation>Calvorn non apre file: %1</translation>
    </message>
</context>
</TS>
