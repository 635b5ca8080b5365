<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name></name>
    <message id="10300">
        <source>RAS Expanded Data Window</source>
        <translation>RAS Expanded Data Window</translation>
    </message>
    <message id="10600">
        <source>Unload Log File</source>
        <translation>Unload Log File</translation>
    </message>
    <message id="10601">
        <source>Select a log file to unload</source>
        <translation>Select a log file to unload</translation>
    </message>
    <message id="10602">
        <source>&amp;Unload</source>
        <translation>&amp;Unload</translation>
    </message>
    <message id="10603">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="10700">
        <source>RAS Log Browser</source>
        <translation>RAS Log Browser</translation>
    </message>
    <message id="10701">
        <source>Log Entry Type</source>
        <translation>Log Entry Type</translation>
    </message>
    <message id="10702">
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message id="10703">
        <source>Date</source>
        <translation>Date</translation>
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
        <translation>Major Error</translation>
    </message>
    <message id="10707">
        <source>Minor Error</source>
        <translation>Minor Error</translation>
    </message>
    <message id="10708">
        <source>Detect Point</source>
        <translation>Detect Point</translation>
    </message>
    <message id="10709">
        <source>Detect Point Type</source>
        <translation>Detect Point Type</translation>
    </message>
    <message id="10710">
        <source>Function</source>
        <translation>Function</translation>
    </message>
    <message id="10711">
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message id="10712">
        <source>&amp;Load...</source>
        <translation>&amp;Load...</translation>
    </message>
    <message id="10713">
        <source>&amp;Merge...</source>
        <translation>&amp;Merge...</translation>
    </message>
    <message id="10714">
        <source>&amp;Unload...</source>
        <translation>&amp;Unload...</translation>
    </message>
    <message id="10715">
        <source>&amp;Write log to disk...</source>
        <translation>&amp;Write log to disk...</translation>
    </message>
    <message id="10716">
        <source>&amp;Print</source>
        <translation>&amp;Print</translation>
    </message>
    <message id="10717">
        <source>Delete .INI file</source>
        <translation>Delete .INI file</translation>
    </message>
    <message id="10718">
        <source>&amp;Edit</source>
        <translation>&amp;Edit</translation>
    </message>
    <message id="10719">
        <source>&amp;Select all <byte value="x9"/>Ctrl+/</source>
        <translation>&amp;Select all <byte value="x9"/>Ctrl+/</translation>
    </message>
    <message id="10720">
        <source>&amp;Deselect all <byte value="x9"/>Ctrl+\</source>
        <translation>&amp;Deselect all <byte value="x9"/>Ctrl+\</translation>
    </message>
    <message id="10721">
        <source>&amp;Reverse selections</source>
        <translation>&amp;Reverse selections</translation>
    </message>
    <message id="10722">
        <source>Cop&amp;y <byte value="x9"/>Ctrl+Ins</source>
        <translation>Cop&amp;y <byte value="x9"/>Ctrl+Ins</translation>
    </message>
    <message id="10723">
        <source>F&amp;ilters</source>
        <translation>F&amp;ilters</translation>
    </message>
    <message id="10724">
        <source>&amp;Entry types...</source>
        <translation>&amp;Entry types...</translation>
    </message>
    <message id="10725">
        <source>&amp;Times...</source>
        <translation>&amp;Times...</translation>
    </message>
    <message id="10726">
        <source>&amp;Dates...</source>
        <translation>&amp;Dates...</translation>
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
        <translation>&amp;Major errors...</translation>
    </message>
    <message id="10730">
        <source>Mi&amp;nor errors...</source>
        <translation>Mi&amp;nor errors...</translation>
    </message>
    <message id="10731">
        <source>Detect p&amp;oints...</source>
        <translation>Detect p&amp;oints...</translation>
    </message>
    <message id="10732">
        <source>&amp;Functions...</source>
        <translation>&amp;Functions...</translation>
    </message>
    <message id="10733">
        <source>&amp;Remove all filters</source>
        <translation>&amp;Remove all filters</translation>
    </message>
    <message id="10734">
        <source>&amp;Columns</source>
        <translation>&amp;Columns</translation>
    </message>
    <message id="10735">
        <source>&amp;Entry type</source>
        <translation>&amp;Entry type</translation>
    </message>
    <message id="10736">
        <source>E&amp;xpandability</source>
        <translation>E&amp;xpandability</translation>
    </message>
    <message id="10737">
        <source>&amp;Time</source>
        <translation>&amp;Time</translation>
    </message>
    <message id="10738">
        <source>&amp;Date</source>
        <translation>&amp;Date</translation>
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
        <translation>&amp;Major error</translation>
    </message>
    <message id="10742">
        <source>Mi&amp;&amp;nor error</source>
        <translation>Mi&amp;&amp;nor error</translation>
    </message>
    <message id="10743">
        <source>Detect p&amp;oint</source>
        <translation>Detect p&amp;oint</translation>
    </message>
    <message id="10744">
        <source>DP T&amp;ype</source>
        <translation>DP T&amp;ype</translation>
    </message>
    <message id="10745">
        <source>&amp;Function</source>
        <translation>&amp;Function</translation>
    </message>
    <message id="10746">
        <source>E&amp;xpansion</source>
        <translation>E&amp;xpansion</translation>
    </message>
    <message id="10747">
        <source>&amp;Expand</source>
        <translation>&amp;Expand</translation>
    </message>
    <message id="10748">
        <source>&amp;Unexpand</source>
        <translation>&amp;Unexpand</translation>
    </message>
    <message id="10749">
        <source>E&amp;xpand all</source>
        <translation>E&amp;xpand all</translation>
    </message>
    <message id="10750">
        <source>Unex&amp;pand all</source>
        <translation>Unex&amp;pand all</translation>
    </message>
    <message id="10751">
        <source>Expand &amp;selected</source>
        <translation>Expand &amp;selected</translation>
    </message>
    <message id="10752">
        <source>Unexpand se&amp;lected</source>
        <translation>Unexpand se&amp;lected</translation>
    </message>
    <message id="10753">
        <source>Expand &amp;non-selected</source>
        <translation>Expand &amp;non-selected</translation>
    </message>
    <message id="10754">
        <source>Unexpand non-sele&amp;cted</source>
        <translation>Unexpand non-sele&amp;cted</translation>
    </message>
    <message id="10755">
        <source>&amp;Display</source>
        <translation>&amp;Display</translation>
    </message>
    <message id="10756">
        <source>Display &amp;all</source>
        <translation>Display &amp;all</translation>
    </message>
    <message id="10757">
        <source>Display only &amp;selected</source>
        <translation>Display only &amp;selected</translation>
    </message>
    <message id="10758">
        <source>Display only &amp;non-selected</source>
        <translation>Display only &amp;non-selected</translation>
    </message>
    <message id="10759">
        <source>Display only &amp;expanded</source>
        <translation>Display only &amp;expanded</translation>
    </message>
    <message id="10760">
        <source>Display only non-e&amp;xpanded</source>
        <translation>Display only non-e&amp;xpanded</translation>
    </message>
    <message id="10800">
        <source>Write log to disk</source>
        <translation>Write log to disk</translation>
    </message>
    <message id="10801">
        <source>Enter a name for the output file</source>
        <translation>Enter a name for the output file</translation>
    </message>
    <message id="10802">
        <source>&amp;Write</source>
        <translation>&amp;Write</translation>
    </message>
    <message id="10803">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="10901">
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message id="10902">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="10903">
        <source>Select All</source>
        <translation>Select All</translation>
    </message>
    <message id="10904">
        <source>Deselect All</source>
        <translation>Deselect All</translation>
    </message>
    <message id="10905">
        <source>Delete Filter</source>
        <translation>Delete Filter</translation>
    </message>
    <message id="11000">
        <source>Select the entry types to be displayed</source>
        <translation>Select the entry types to be displayed</translation>
    </message>
    <message id="11001">
        <source>Entry Type Filter Data Entry</source>
        <translation>Entry Type Filter Data Entry</translation>
    </message>
    <message id="11100">
        <source>Define the time range to be displayed</source>
        <translation>Define the time range to be displayed</translation>
    </message>
    <message id="11101">
        <source>Time Filter Data Entry</source>
        <translation>Time Filter Data Entry</translation>
    </message>
    <message id="11200">
        <source>Select the functions to be displayed</source>
        <translation>Select the functions to be displayed</translation>
    </message>
    <message id="11201">
        <source>Function Filter Data Entry</source>
        <translation>Function Filter Data Entry</translation>
    </message>
    <message id="11400">
        <source>Define the dates to be displayed</source>
        <translation>Define the dates to be displayed</translation>
    </message>
    <message id="11401">
        <source>Date Filter Data Entry</source>
        <translation>Date Filter Data Entry</translation>
    </message>
    <message id="11500">
        <source>Define the process IDs to be displayed</source>
        <translation>Define the process IDs to be displayed</translation>
    </message>
    <message id="11501">
        <source>PID Filter Data Entry</source>
        <translation>PID Filter Data Entry</translation>
    </message>
    <message id="11600">
        <source>Define the terminal IDs to be displayed</source>
        <translation>Define the terminal IDs to be displayed</translation>
    </message>
    <message id="11601">
        <source>TID Filter Data Entry</source>
        <translation>TID Filter Data Entry</translation>
    </message>
    <message id="11700">
        <source>Define the major errors to be displayed</source>
        <translation>Define the major errors to be displayed</translation>
    </message>
    <message id="11701">
        <source>Major Error Filter Data Entry</source>
        <translation>Major Error Filter Data Entry</translation>
    </message>
    <message id="11800">
        <source>Define the minor errors to be displayed</source>
        <translation>Define the minor errors to be displayed</translation>
    </message>
    <message id="11801">
        <source>Minor Error Filter Data Entry</source>
        <translation>Minor Error Filter Data Entry</translation>
    </message>
    <message id="11900">
        <source>Define the detect points to be displayed</source>
        <translation>Define the detect points to be displayed</translation>
    </message>
    <message id="11901">
        <source>Detect Point Filter Data Entry</source>
        <translation>Detect Point Filter Data Entry</translation>
    </message>
    <message id="12000">
        <source>There are no values yet</source>
        <translation>There are no values yet</translation>
    </message>
    <message id="12001">
        <source>(no name)</source>
        <translation>(no name)</translation>
    </message>
    <message id="12050">
        <source>Written: %1 records to %2</source>
        <translation>Written: %1 records to %2</translation>
    </message>
    <message id="12051">
        <source>Not written: %1: %2</source>
        <translation>Not written: %1: %2</translation>
    </message>
    <message id="12052">
        <source>Not read: %1: %2</source>
        <translation>Not read: %1: %2</translation>
    </message>
    <message id="12053">
        <source>Not done: there is not enough memory</source>
        <translation>Not done: there is not enough memory</translation>
    </message>
    <message id="12100">
        <source>%1, entry %2</source>
        <translation>%1, entry %2</translation>
    </message>
    <message id="12101">
        <source>Filters: %1</source>
        <translation>Filters: %1</translation>
    </message>
    <message id="12102">
        <source>Parked: %1</source>
        <translation>Parked: %1</translation>
    </message>
    <message id="12103">
        <source>Findings: %1</source>
        <translation>Findings: %1</translation>
    </message>
    <message id="12104">
        <source>Read: %1: its first entry is damaged; this may be no log</source>
        <translation>Read: %1: its first entry is damaged; this may be no log</translation>
    </message>
    <message id="12105">
        <source>Findings</source>
        <translation>Findings</translation>
    </message>
    <message id="12106">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="12107">
        <source>Entry</source>
        <translation>Entry</translation>
    </message>
    <message id="12108">
        <source>Offset</source>
        <translation>Offset</translation>
    </message>
    <message id="12109">
        <source>Finding</source>
        <translation>Finding</translation>
    </message>
    <message id="12110">
        <source>Findings not listed: %1</source>
        <translation>Findings not listed: %1</translation>
    </message>
    <message id="12111">
        <source>The record is not among the rows: filtered out</source>
        <translation>The record is not among the rows: filtered out</translation>
    </message>
    <message id="12112">
        <source>The record is not among the rows: parked</source>
        <translation>The record is not among the rows: parked</translation>
    </message>
    <message id="12113">
        <source>The record is not among the rows: no more fit into the table</source>
        <translation>The record is not among the rows: no more fit into the table</translation>
    </message>
    <message id="12114">
        <source>Current row: %1</source>
        <translation>Current row: %1</translation>
    </message>
    <message id="12115">
        <source>as many logs as can be are loaded already</source>
        <translation>as many logs as can be are loaded already</translation>
    </message>
    <message id="12150">
        <source>Copied: %1 of %2 lines</source>
        <translation>Copied: %1 of %2 lines</translation>
    </message>
    <message id="12200">
        <source>Find</source>
        <translation>Find</translation>
    </message>
    <message id="12201">
        <source>Find:</source>
        <translation>Find:</translation>
    </message>
    <message id="12202">
        <source>What to look for</source>
        <translation>What to look for</translation>
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
        <translation>Regular expression</translation>
    </message>
    <message id="12206">
        <source>Match case</source>
        <translation>Match case</translation>
    </message>
    <message id="12207">
        <source>Previous</source>
        <translation>Previous</translation>
    </message>
    <message id="12208">
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message id="12209">
        <source>Select All Matches</source>
        <translation>Select All Matches</translation>
    </message>
    <message id="12210">
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message id="12211">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="12212">
        <source>Progress of the search</source>
        <translation>Progress of the search</translation>
    </message>
    <message id="12213">
        <source>%1 of %2 records</source>
        <translation>%1 of %2 records</translation>
    </message>
    <message id="12214">
        <source>Records found: %1</source>
        <translation>Records found: %1</translation>
    </message>
    <message id="12215">
        <source>No record found</source>
        <translation>No record found</translation>
    </message>
    <message id="12216">
        <source>Searching...</source>
        <translation>Searching...</translation>
    </message>
    <message id="12217">
        <source>continued from the top</source>
        <translation>continued from the top</translation>
    </message>
    <message id="12218">
        <source>continued from the bottom</source>
        <translation>continued from the bottom</translation>
    </message>
    <message id="12219">
        <source>search stopped</source>
        <translation>search stopped</translation>
    </message>
    <message id="12220">
        <source>Cannot search: %1</source>
        <translation>Cannot search: %1</translation>
    </message>
    <message id="12221">
        <source>&amp;Find...</source>
        <translation>&amp;Find...</translation>
    </message>
    <message id="12230">
        <source>Go to time</source>
        <translation>Go to time</translation>
    </message>
    <message id="12231">
        <source>Go to time:</source>
        <translation>Go to time:</translation>
    </message>
    <message id="12232">
        <source>A time, or a date and a time, such as %1</source>
        <translation>A time, or a date and a time, such as %1</translation>
    </message>
    <message id="12233">
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message id="12234">
        <source>This is no time, and no date and time such as %1</source>
        <translation>This is no time, and no date and time such as %1</translation>
    </message>
    <message id="12235">
        <source>No row is that late</source>
        <translation>No row is that late</translation>
    </message>
    <message id="12236">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="12300">
        <source>Show &amp;Only %1 %2</source>
        <translation>Show &amp;Only %1 %2</translation>
    </message>
    <message id="12301">
        <source>&amp;Hide %1 %2</source>
        <translation>&amp;Hide %1 %2</translation>
    </message>
    <message id="12302">
        <source>Select &amp;All with %1 %2</source>
        <translation>Select &amp;All with %1 %2</translation>
    </message>
    <message id="12303">
        <source>Entry Type</source>
        <translation>Entry Type</translation>
    </message>
    <message id="12304">
        <source>&amp;Copy Rows</source>
        <translation>&amp;Copy Rows</translation>
    </message>
    <message id="12305">
        <source>Copy Rows with &amp;Data</source>
        <translation>Copy Rows with &amp;Data</translation>
    </message>
    <message id="12306">
        <source>Set &amp;Mark</source>
        <translation>Set &amp;Mark</translation>
    </message>
    <message id="12307">
        <source>Clear &amp;Mark</source>
        <translation>Clear &amp;Mark</translation>
    </message>
    <message id="12308">
        <source>Select Mar&amp;ked</source>
        <translation>Select Mar&amp;ked</translation>
    </message>
    <message id="12310">
        <source>Rows copied: %1</source>
        <translation>Rows copied: %1</translation>
    </message>
    <message id="12311">
        <source>Not copied: %1 rows, but no more than %2 can be</source>
        <translation>Not copied: %1 rows, but no more than %2 can be</translation>
    </message>
    <message id="12312">
        <source>Not copied: the data of %1 rows, which have more than %2 lines</source>
        <translation>Not copied: the data of %1 rows, which have more than %2 lines</translation>
    </message>
    <message id="12315">
        <source>Marked</source>
        <translation>Marked</translation>
    </message>
    <message id="12316">
        <source>Marks: %1</source>
        <translation>Marks: %1</translation>
    </message>
    <message id="12318">
        <source>No row is marked</source>
        <translation>No row is marked</translation>
    </message>
    <message id="12319">
        <source>No mark below; went on from the top</source>
        <translation>No mark below; went on from the top</translation>
    </message>
    <message id="12320">
        <source>No mark above; went on from the bottom</source>
        <translation>No mark above; went on from the bottom</translation>
    </message>
    <message id="12324">
        <source>%1, +%2</source>
        <translation>%1, +%2</translation>
    </message>
    <message id="12325">
        <source>%1, entry %2, byte %3</source>
        <translation>%1, entry %2, byte %3</translation>
    </message>
    <message id="12326">
        <source>%1, %2 after the row before</source>
        <translation>%1, %2 after the row before</translation>
    </message>
    <message id="12327">
        <source>Selected: %1 rows, %2 to %3</source>
        <translation>Selected: %1 rows, %2 to %3</translation>
    </message>
    <message id="12328">
        <source>%1, %2 long</source>
        <translation>%1, %2 long</translation>
    </message>
    <message id="12329">
        <source>%1 d %2</source>
        <translation>%1 d %2</translation>
    </message>
    <message id="12330">
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
    <message id="12331">
        <source>Select &amp;All</source>
        <translation>Select &amp;All</translation>
    </message>
    <message id="12332">
        <source>&amp;Go to Record</source>
        <translation>&amp;Go to Record</translation>
    </message>
    <message id="12340">
        <source>Overview of the rows</source>
        <translation>Overview of the rows</translation>
    </message>
    <message id="12341">
        <source>From left to right: errors, matches, selected rows, marks. A click goes to the place.</source>
        <translation>From left to right: errors, matches, selected rows, marks. A click goes to the place.</translation>
    </message>
    <message id="12342">
        <source>%1, rows %2 to %3</source>
        <translation>%1, rows %2 to %3</translation>
    </message>
    <message id="12343">
        <source>Errors: %1 of %2</source>
        <translation>Errors: %1 of %2</translation>
    </message>
    <message id="12344">
        <source>Errors: about %1% of %2</source>
        <translation>Errors: about %1% of %2</translation>
    </message>
    <message id="12350">
        <source>Not taken: %1</source>
        <translation>Not taken: %1</translation>
    </message>
    <message id="12351">
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message id="12352">
        <source>is no file</source>
        <translation>is no file</translation>
    </message>
    <message id="12400">
        <source>Reading...</source>
        <translation>Reading...</translation>
    </message>
    <message id="12401">
        <source>The log has changed on disk since it was read.</source>
        <translation>The log has changed on disk since it was read.</translation>
    </message>
    <message id="12402">
        <source>The data cannot be read from the disk.</source>
        <translation>The data cannot be read from the disk.</translation>
    </message>
    <message id="12403">
        <source>Written: %1 records to %2, but %3 of them without their data, which have changed on disk or cannot be read</source>
        <translation>Written: %1 records to %2, but %3 of them without their data, which have changed on disk or cannot be read</translation>
    </message>
    <message id="12404">
        <source>%1: data have changed on disk or cannot be read</source>
        <translation>%1: data have changed on disk or cannot be read</translation>
    </message>
    <message id="12405">
        <source>logs were loaded or unloaded meanwhile</source>
        <translation>logs were loaded or unloaded meanwhile</translation>
    </message>
    <message id="12406">
        <source>Not copied: %1</source>
        <translation>Not copied: %1</translation>
    </message>
    <message id="12407">
        <source>Lines copied: %1</source>
        <translation>Lines copied: %1</translation>
    </message>
    <message id="12450">
        <source>The manual is not installed: there is no %1</source>
        <translation>The manual is not installed: there is no %1</translation>
    </message>
    <message id="12451">
        <source>No program shows the manual %1</source>
        <translation>No program shows the manual %1</translation>
    </message>
    <message id="20000">
        <source>Select a log to Load</source>
        <translation>Select a log to Load</translation>
    </message>
    <message id="20001">
        <source>&amp;Load</source>
        <translation>&amp;Load</translation>
    </message>
    <message id="20002">
        <source>Select a log file to merge in</source>
        <translation>Select a log file to merge in</translation>
    </message>
    <message id="20003">
        <source>&amp;Merge</source>
        <translation>&amp;Merge</translation>
    </message>
    <message id="20004">
        <source>Log files (*.log)</source>
        <translation>Log files (*.log)</translation>
    </message>
    <message id="20005">
        <source>All files (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message id="20010">
        <source>Records shown: %1 of %2</source>
        <translation>Records shown: %1 of %2</translation>
    </message>
    <message id="20011">
        <source>Logs: %1</source>
        <translation>Logs: %1</translation>
    </message>
    <message id="20012">
        <source>Records shown: %1 of %2 (no more fit into the table)</source>
        <translation>Records shown: %1 of %2 (no more fit into the table)</translation>
    </message>
    <message id="20020">
        <source>Log records</source>
        <translation>Log records</translation>
    </message>
    <message id="20021">
        <source>Progress</source>
        <translation>Progress</translation>
    </message>
    <message id="61536">
        <source>E&amp;xit</source>
        <translation>E&amp;xit</translation>
    </message>
</context>
</TS>
