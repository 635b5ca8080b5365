<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message id="10300">
        <source>RAS Expanded Data Window</source>
        <translation>Aufgeklappte RAS-Daten</translation>
    </message>
    <message id="10600">
        <source>Unload Log File</source>
        <translation>Log-Datei entladen</translation>
    </message>
    <message id="10601">
        <source>Select a log file to unload</source>
        <translation>Wählen Sie die Log-Datei, die entladen werden soll</translation>
    </message>
    <message id="10602">
        <source>&amp;Unload</source>
        <translation>&amp;Entladen</translation>
    </message>
    <message id="10603">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="10700">
        <source>RAS Log Browser</source>
        <translation>RAS Log Browser</translation>
    </message>
    <message id="10701">
        <source>Log Entry Type</source>
        <translation>Eintragstyp</translation>
    </message>
    <message id="10702">
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message id="10703">
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message id="10704">
        <source>PID</source>
        <translation>PID</translation>
    </message>
    <message id="10705">
        <source>TID</source>
        <translation>TID</translation>
    </message>
    <message id="10706">
        <source>Major Error</source>
        <translation>Hauptfehler</translation>
    </message>
    <message id="10707">
        <source>Minor Error</source>
        <translation>Nebenfehler</translation>
    </message>
    <message id="10708">
        <source>Detect Point</source>
        <translation>Meldepunkt</translation>
    </message>
    <message id="10709">
        <source>Detect Point Type</source>
        <translation>Meldepunkttyp</translation>
    </message>
    <message id="10710">
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message id="10711">
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message id="10712">
        <source>&amp;Load...</source>
        <translation>&amp;Laden...</translation>
    </message>
    <message id="10713">
        <source>&amp;Merge...</source>
        <translation>&amp;Zusammenführen...</translation>
    </message>
    <message id="10714">
        <source>&amp;Unload...</source>
        <translation>&amp;Entladen...</translation>
    </message>
    <message id="10715">
        <source>&amp;Write log to disk...</source>
        <translation>Log auf Platte &amp;schreiben...</translation>
    </message>
    <message id="10716">
        <source>&amp;Print</source>
        <translation>&amp;Drucken</translation>
    </message>
    <message id="10717">
        <source>Delete .INI file</source>
        <translation>.INI-Datei löschen</translation>
    </message>
    <message id="10718">
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message id="10719">
        <source>&amp;Select all <byte value="x9"/>Ctrl+/</source>
        <translation>&amp;Alles auswählen <byte value="x9"/>Strg+/</translation>
    </message>
    <message id="10720">
        <source>&amp;Deselect all <byte value="x9"/>Ctrl+\</source>
        <translation>Auswahl auf&amp;heben <byte value="x9"/>Strg+\</translation>
    </message>
    <message id="10721">
        <source>&amp;Reverse selections</source>
        <translation>Auswahl &amp;umkehren</translation>
    </message>
    <message id="10722">
        <source>Cop&amp;y <byte value="x9"/>Ctrl+Ins</source>
        <translation>&amp;Kopieren <byte value="x9"/>Strg+Einfg</translation>
    </message>
    <message id="10723">
        <source>F&amp;ilters</source>
        <translation>&amp;Filter</translation>
    </message>
    <message id="10724">
        <source>&amp;Entry types...</source>
        <translation>&amp;Eintragstypen...</translation>
    </message>
    <message id="10725">
        <source>&amp;Times...</source>
        <translation>&amp;Zeiten...</translation>
    </message>
    <message id="10726">
        <source>&amp;Dates...</source>
        <translation>&amp;Datum...</translation>
    </message>
    <message id="10727">
        <source>&amp;PIDs...</source>
        <translation>&amp;PIDs...</translation>
    </message>
    <message id="10728">
        <source>T&amp;IDs...</source>
        <translation>T&amp;IDs...</translation>
    </message>
    <message id="10729">
        <source>&amp;Major errors...</source>
        <translation>&amp;Hauptfehler...</translation>
    </message>
    <message id="10730">
        <source>Mi&amp;nor errors...</source>
        <translation>&amp;Nebenfehler...</translation>
    </message>
    <message id="10731">
        <source>Detect p&amp;oints...</source>
        <translation>&amp;Meldepunkte...</translation>
    </message>
    <message id="10732">
        <source>&amp;Functions...</source>
        <translation>&amp;Funktionen...</translation>
    </message>
    <message id="10733">
        <source>&amp;Remove all filters</source>
        <translation>&amp;Alle Filter entfernen</translation>
    </message>
    <message id="10734">
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message id="10735">
        <source>&amp;Entry type</source>
        <translation>&amp;Eintragstyp</translation>
    </message>
    <message id="10736">
        <source>E&amp;xpandability</source>
        <translation>Auf&amp;klappbarkeit</translation>
    </message>
    <message id="10737">
        <source>&amp;Time</source>
        <translation>&amp;Zeit</translation>
    </message>
    <message id="10738">
        <source>&amp;Date</source>
        <translation>&amp;Datum</translation>
    </message>
    <message id="10739">
        <source>&amp;PID</source>
        <translation>&amp;PID</translation>
    </message>
    <message id="10740">
        <source>T&amp;ID</source>
        <translation>T&amp;ID</translation>
    </message>
    <message id="10741">
        <source>&amp;Major error</source>
        <translation>&amp;Hauptfehler</translation>
    </message>
    <message id="10742">
        <source>Mi&amp;&amp;nor error</source>
        <translation>&amp;Nebenfehler</translation>
    </message>
    <message id="10743">
        <source>Detect p&amp;oint</source>
        <translation>&amp;Meldepunkt</translation>
    </message>
    <message id="10744">
        <source>DP T&amp;ype</source>
        <translation>MP-T&amp;yp</translation>
    </message>
    <message id="10745">
        <source>&amp;Function</source>
        <translation>&amp;Funktion</translation>
    </message>
    <message id="10746">
        <source>E&amp;xpansion</source>
        <translation>&amp;Aufklappen</translation>
    </message>
    <message id="10747">
        <source>&amp;Expand</source>
        <translation>&amp;Aufklappen</translation>
    </message>
    <message id="10748">
        <source>&amp;Unexpand</source>
        <translation>&amp;Zuklappen</translation>
    </message>
    <message id="10749">
        <source>E&amp;xpand all</source>
        <translation>A&amp;lle aufklappen</translation>
    </message>
    <message id="10750">
        <source>Unex&amp;pand all</source>
        <translation>Alle zu&amp;klappen</translation>
    </message>
    <message id="10751">
        <source>Expand &amp;selected</source>
        <translation>Aus&amp;gewählte aufklappen</translation>
    </message>
    <message id="10752">
        <source>Unexpand se&amp;lected</source>
        <translation>Ausge&amp;wählte zuklappen</translation>
    </message>
    <message id="10753">
        <source>Expand &amp;non-selected</source>
        <translation>&amp;Nicht ausgewählte aufklappen</translation>
    </message>
    <message id="10754">
        <source>Unexpand non-sele&amp;cted</source>
        <translation>Ni&amp;cht ausgewählte zuklappen</translation>
    </message>
    <message id="10755">
        <source>&amp;Display</source>
        <translation>An&amp;zeige</translation>
    </message>
    <message id="10756">
        <source>Display &amp;all</source>
        <translation>&amp;Alle anzeigen</translation>
    </message>
    <message id="10757">
        <source>Display only &amp;selected</source>
        <translation>Nur aus&amp;gewählte anzeigen</translation>
    </message>
    <message id="10758">
        <source>Display only &amp;non-selected</source>
        <translation>Nur &amp;nicht ausgewählte anzeigen</translation>
    </message>
    <message id="10759">
        <source>Display only &amp;expanded</source>
        <translation>Nur aufge&amp;klappte anzeigen</translation>
    </message>
    <message id="10760">
        <source>Display only non-e&amp;xpanded</source>
        <translation>Nur nicht a&amp;ufgeklappte anzeigen</translation>
    </message>
    <message id="10800">
        <source>Write log to disk</source>
        <translation>Log auf Platte schreiben</translation>
    </message>
    <message id="10801">
        <source>Enter a name for the output file</source>
        <translation>Geben Sie einen Namen für die Ausgabedatei ein</translation>
    </message>
    <message id="10802">
        <source>&amp;Write</source>
        <translation>&amp;Schreiben</translation>
    </message>
    <message id="10803">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="10901">
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message id="10902">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="10903">
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message id="10904">
        <source>Deselect All</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message id="10905">
        <source>Delete Filter</source>
        <translation>Filter löschen</translation>
    </message>
    <message id="11000">
        <source>Select the entry types to be displayed</source>
        <translation>Wählen Sie die Eintragstypen, die angezeigt werden sollen</translation>
    </message>
    <message id="11001">
        <source>Entry Type Filter Data Entry</source>
        <translation>Filter nach Eintragstypen</translation>
    </message>
    <message id="11100">
        <source>Define the time range to be displayed</source>
        <translation>Legen Sie den Zeitraum fest, der angezeigt werden soll</translation>
    </message>
    <message id="11101">
        <source>Time Filter Data Entry</source>
        <translation>Filter nach Zeiten</translation>
    </message>
    <message id="11200">
        <source>Select the functions to be displayed</source>
        <translation>Wählen Sie die Funktionen, die angezeigt werden sollen</translation>
    </message>
    <message id="11201">
        <source>Function Filter Data Entry</source>
        <translation>Filter nach Funktionen</translation>
    </message>
    <message id="11400">
        <source>Define the dates to be displayed</source>
        <translation>Legen Sie die Tage fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11401">
        <source>Date Filter Data Entry</source>
        <translation>Filter nach Datum</translation>
    </message>
    <message id="11500">
        <source>Define the process IDs to be displayed</source>
        <translation>Legen Sie die Prozess-IDs fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11501">
        <source>PID Filter Data Entry</source>
        <translation>Filter nach PIDs</translation>
    </message>
    <message id="11600">
        <source>Define the terminal IDs to be displayed</source>
        <translation>Legen Sie die Terminal-IDs fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11601">
        <source>TID Filter Data Entry</source>
        <translation>Filter nach TIDs</translation>
    </message>
    <message id="11700">
        <source>Define the major errors to be displayed</source>
        <translation>Legen Sie die Hauptfehler fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11701">
        <source>Major Error Filter Data Entry</source>
        <translation>Filter nach Hauptfehlern</translation>
    </message>
    <message id="11800">
        <source>Define the minor errors to be displayed</source>
        <translation>Legen Sie die Nebenfehler fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11801">
        <source>Minor Error Filter Data Entry</source>
        <translation>Filter nach Nebenfehlern</translation>
    </message>
    <message id="11900">
        <source>Define the detect points to be displayed</source>
        <translation>Legen Sie die Meldepunkte fest, die angezeigt werden sollen</translation>
    </message>
    <message id="11901">
        <source>Detect Point Filter Data Entry</source>
        <translation>Filter nach Meldepunkten</translation>
    </message>
    <message id="12000">
        <source>There are no values yet</source>
        <translation>Es gibt noch keine Werte</translation>
    </message>
    <message id="12001">
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message id="12050">
        <source>Written: %1 records to %2</source>
        <translation>Geschrieben: %1 Datensätze nach %2</translation>
    </message>
    <message id="12051">
        <source>Not written: %1: %2</source>
        <translation>Nicht geschrieben: %1: %2</translation>
    </message>
    <message id="12052">
        <source>Not read: %1: %2</source>
        <translation>Nicht gelesen: %1: %2</translation>
    </message>
    <message id="12053">
        <source>Not done: there is not enough memory</source>
        <translation>Nicht ausgeführt: Der Speicher reicht nicht</translation>
    </message>
    <message id="12100">
        <source>%1, entry %2</source>
        <translation>%1, Eintrag %2</translation>
    </message>
    <message id="12101">
        <source>Filters: %1</source>
        <translation>Filter: %1</translation>
    </message>
    <message id="12102">
        <source>Parked: %1</source>
        <translation>Geparkt: %1</translation>
    </message>
    <message id="12103">
        <source>Findings: %1</source>
        <translation>Befunde: %1</translation>
    </message>
    <message id="12104">
        <source>Read: %1: its first entry is damaged; this may be no log</source>
        <translation>Gelesen: %1: Der erste Eintrag ist beschädigt; vielleicht ist dies kein Log</translation>
    </message>
    <message id="12105">
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message id="12106">
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message id="12107">
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message id="12108">
        <source>Offset</source>
        <translation>Offset</translation>
    </message>
    <message id="12109">
        <source>Finding</source>
        <translation>Befund</translation>
    </message>
    <message id="12110">
        <source>Findings not listed: %1</source>
        <translation>Nicht aufgeführte Befunde: %1</translation>
    </message>
    <message id="12111">
        <source>The record is not among the rows: filtered out</source>
        <translation>Der Datensatz steht in keiner Zeile: ausgefiltert</translation>
    </message>
    <message id="12112">
        <source>The record is not among the rows: parked</source>
        <translation>Der Datensatz steht in keiner Zeile: geparkt</translation>
    </message>
    <message id="12113">
        <source>The record is not among the rows: no more fit into the table</source>
        <translation>Der Datensatz steht in keiner Zeile: mehr passen nicht in die Tabelle</translation>
    </message>
    <message id="12114">
        <source>Current row: %1</source>
        <translation>Aktuelle Zeile: %1</translation>
    </message>
    <message id="12115">
        <source>as many logs as can be are loaded already</source>
        <translation>mehr Logs können nicht geladen werden</translation>
    </message>
    <message id="12150">
        <source>Copied: %1 of %2 lines</source>
        <translation>Kopiert: %1 von %2 Zeilen</translation>
    </message>
    <message id="12200">
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message id="12201">
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message id="12202">
        <source>What to look for</source>
        <translation>Wonach gesucht wird</translation>
    </message>
    <message id="12203">
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message id="12204">
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message id="12205">
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message id="12206">
        <source>Match case</source>
        <translation>Groß-/Kleinschreibung</translation>
    </message>
    <message id="12207">
        <source>Previous</source>
        <translation>Vorheriger</translation>
    </message>
    <message id="12208">
        <source>Next</source>
        <translation>Nächster</translation>
    </message>
    <message id="12209">
        <source>Select All Matches</source>
        <translation>Alle Treffer auswählen</translation>
    </message>
    <message id="12210">
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message id="12211">
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message id="12212">
        <source>Progress of the search</source>
        <translation>Fortschritt der Suche</translation>
    </message>
    <message id="12213">
        <source>%1 of %2 records</source>
        <translation>%1 von %2 Datensätzen</translation>
    </message>
    <message id="12214">
        <source>Records found: %1</source>
        <translation>Gefundene Datensätze: %1</translation>
    </message>
    <message id="12215">
        <source>No record found</source>
        <translation>Kein Datensatz gefunden</translation>
    </message>
    <message id="12216">
        <source>Searching...</source>
        <translation>Suche läuft...</translation>
    </message>
    <message id="12217">
        <source>continued from the top</source>
        <translation>von oben fortgesetzt</translation>
    </message>
    <message id="12218">
        <source>continued from the bottom</source>
        <translation>von unten fortgesetzt</translation>
    </message>
    <message id="12219">
        <source>search stopped</source>
        <translation>Suche angehalten</translation>
    </message>
    <message id="12220">
        <source>Cannot search: %1</source>
        <translation>Suche nicht möglich: %1</translation>
    </message>
    <message id="12221">
        <source>&amp;Find...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message id="12230">
        <source>Go to time</source>
        <translation>Zu einer Zeit gehen</translation>
    </message>
    <message id="12231">
        <source>Go to time:</source>
        <translation>Gehe zu Zeit:</translation>
    </message>
    <message id="12232">
        <source>A time, or a date and a time, such as %1</source>
        <translation>Eine Zeit oder Datum und Zeit, zum Beispiel %1</translation>
    </message>
    <message id="12233">
        <source>Go</source>
        <translation>Los</translation>
    </message>
    <message id="12234">
        <source>This is no time, and no date and time such as %1</source>
        <translation>Das ist keine Zeit und kein Datum mit Zeit wie %1</translation>
    </message>
    <message id="12235">
        <source>No row is that late</source>
        <translation>Keine Zeile ist so spät</translation>
    </message>
    <message id="12236">
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message id="12300">
        <source>Show &amp;Only %1 %2</source>
        <translation>&amp;Nur %1 %2 anzeigen</translation>
    </message>
    <message id="12301">
        <source>&amp;Hide %1 %2</source>
        <translation>%1 %2 a&amp;usblenden</translation>
    </message>
    <message id="12302">
        <source>Select &amp;All with %1 %2</source>
        <translation>Alle mit %1 %2 aus&amp;wählen</translation>
    </message>
    <message id="12303">
        <source>Entry Type</source>
        <translation>Eintragstyp</translation>
    </message>
    <message id="12304">
        <source>&amp;Copy Rows</source>
        <translation>Zeilen &amp;kopieren</translation>
    </message>
    <message id="12305">
        <source>Copy Rows with &amp;Data</source>
        <translation>Zeilen mit &amp;Daten kopieren</translation>
    </message>
    <message id="12306">
        <source>Set &amp;Mark</source>
        <translation>&amp;Markierung setzen</translation>
    </message>
    <message id="12307">
        <source>Clear &amp;Mark</source>
        <translation>&amp;Markierung entfernen</translation>
    </message>
    <message id="12308">
        <source>Select Mar&amp;ked</source>
        <translation>Markie&amp;rte auswählen</translation>
    </message>
    <message id="12310">
        <source>Rows copied: %1</source>
        <translation>Zeilen kopiert: %1</translation>
    </message>
    <message id="12311">
        <source>Not copied: %1 rows, but no more than %2 can be</source>
        <translation>Nicht kopiert: %1 Zeilen, es können aber höchstens %2 sein</translation>
    </message>
    <message id="12312">
        <source>Not copied: the data of %1 rows, which have more than %2 lines</source>
        <translation>Nicht kopiert: die Daten von %1 Zeilen, die mehr als %2 Textzeilen haben</translation>
    </message>
    <message id="12315">
        <source>Marked</source>
        <translation>Markiert</translation>
    </message>
    <message id="12316">
        <source>Marks: %1</source>
        <translation>Markierungen: %1</translation>
    </message>
    <message id="12318">
        <source>No row is marked</source>
        <translation>Keine Zeile ist markiert</translation>
    </message>
    <message id="12319">
        <source>No mark below; went on from the top</source>
        <translation>Keine Markierung weiter unten; von oben weitergesucht</translation>
    </message>
    <message id="12320">
        <source>No mark above; went on from the bottom</source>
        <translation>Keine Markierung weiter oben; von unten weitergesucht</translation>
    </message>
    <message id="12324">
        <source>%1, +%2</source>
        <translation>%1, +%2</translation>
    </message>
    <message id="12325">
        <source>%1, entry %2, byte %3</source>
        <translation>%1, Eintrag %2, Byte %3</translation>
    </message>
    <message id="12326">
        <source>%1, %2 after the row before</source>
        <translation>%1, %2 nach der Zeile davor</translation>
    </message>
    <message id="12327">
        <source>Selected: %1 rows, %2 to %3</source>
        <translation>Ausgewählt: %1 Zeilen, %2 bis %3</translation>
    </message>
    <message id="12328">
        <source>%1, %2 long</source>
        <translation>%1, Dauer %2</translation>
    </message>
    <message id="12329">
        <source>%1 d %2</source>
        <translation>%1 T %2</translation>
    </message>
    <message id="12330">
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message id="12331">
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message id="12332">
        <source>&amp;Go to Record</source>
        <translation>&amp;Zum Datensatz</translation>
    </message>
    <message id="12340">
        <source>Overview of the rows</source>
        <translation>Übersicht der Zeilen</translation>
    </message>
    <message id="12341">
        <source>From left to right: errors, matches, selected rows, marks. A click goes to the place.</source>
        <translation>Von links nach rechts: Fehler, Treffer, ausgewählte Zeilen, Markierungen. Ein Klick führt zur Stelle.</translation>
    </message>
    <message id="12342">
        <source>%1, rows %2 to %3</source>
        <translation>%1, Zeilen %2 bis %3</translation>
    </message>
    <message id="12343">
        <source>Errors: %1 of %2</source>
        <translation>Fehler: %1 von %2</translation>
    </message>
    <message id="12344">
        <source>Errors: about %1% of %2</source>
        <translation>Fehler: etwa %1 % von %2</translation>
    </message>
    <message id="12350">
        <source>Not taken: %1</source>
        <translation>Nicht angenommen: %1</translation>
    </message>
    <message id="12351">
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message id="12352">
        <source>is no file</source>
        <translation>ist keine Datei</translation>
    </message>
    <message id="12400">
        <source>Reading...</source>
        <translation>Wird gelesen ...</translation>
    </message>
    <message id="12401">
        <source>The log has changed on disk since it was read.</source>
        <translation>Das Log hat sich auf der Platte geändert, seit es gelesen wurde.</translation>
    </message>
    <message id="12402">
        <source>The data cannot be read from the disk.</source>
        <translation>Die Daten lassen sich nicht von der Platte lesen.</translation>
    </message>
    <message id="12403">
        <source>Written: %1 records to %2, but %3 of them without their data, which have changed on disk or cannot be read</source>
        <translation>Geschrieben: %1 Einträge nach %2, davon %3 ohne ihre Daten, die sich auf der Platte geändert haben oder nicht lesbar sind</translation>
    </message>
    <message id="12404">
        <source>%1: data have changed on disk or cannot be read</source>
        <translation>%1: Daten haben sich auf der Platte geändert oder sind nicht lesbar</translation>
    </message>
    <message id="12405">
        <source>logs were loaded or unloaded meanwhile</source>
        <translation>inzwischen wurden Logs geladen oder entladen</translation>
    </message>
    <message id="12406">
        <source>Not copied: %1</source>
        <translation>Nicht kopiert: %1</translation>
    </message>
    <message id="12407">
        <source>Lines copied: %1</source>
        <translation>Zeilen kopiert: %1</translation>
    </message>
    <message id="12450">
        <source>The manual is not installed: there is no %1</source>
        <translation>Das Handbuch ist nicht installiert: %1 fehlt</translation>
    </message>
    <message id="12451">
        <source>No program shows the manual %1</source>
        <translation>Kein Programm zeigt das Handbuch %1</translation>
    </message>
    <message id="20000">
        <source>Select a log to Load</source>
        <translation>Log zum Laden auswählen</translation>
    </message>
    <message id="20001">
        <source>&amp;Load</source>
        <translation>&amp;Laden</translation>
    </message>
    <message id="20002">
        <source>Select a log file to merge in</source>
        <translation>Log-Datei zum Zusammenführen auswählen</translation>
    </message>
    <message id="20003">
        <source>&amp;Merge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message id="20004">
        <source>Log files (*.log)</source>
        <translation>Log-Dateien (*.log)</translation>
    </message>
    <message id="20005">
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message id="20010">
        <source>Records shown: %1 of %2</source>
        <translation>Angezeigte Datensätze: %1 von %2</translation>
    </message>
    <message id="20011">
        <source>Logs: %1</source>
        <translation>Logs: %1</translation>
    </message>
    <message id="20012">
        <source>Records shown: %1 of %2 (no more fit into the table)</source>
        <translation>Angezeigte Datensätze: %1 von %2 (mehr passen nicht in die Tabelle)</translation>
    </message>
    <message id="20020">
        <source>Log records</source>
        <translation>Log-Datensätze</translation>
    </message>
    <message id="20021">
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message id="61536">
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
</context>
</TS>
