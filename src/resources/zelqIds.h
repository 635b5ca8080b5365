#pragma once

/// Identifiers of texts, commands and controls. The texts stand in ZLQUOR3U under these numbers;
/// the number of a menu text is also the number of its command.
namespace zelqId {

// Results of every dialog.
inline constexpr int kAccepted = 10701;
inline constexpr int kCancelled = 10702;

// Frames and their controls.
inline constexpr int kMainWindow = 15600;  ///< also the accelerator table
inline constexpr int kDialogPrompt = 15200;
inline constexpr int kDialogButtons = 15201;
inline constexpr int kUnloadDialog = 15600;
inline constexpr int kUnloadList = 15602;
inline constexpr int kUnloadAction = 15604;
inline constexpr int kUnloadCancel = 15605;

inline constexpr int kWriteDialog = 15800;
inline constexpr int kWriteField = 15802;
inline constexpr int kWriteAction = 15804;
inline constexpr int kWriteCancel = 15805;
inline constexpr int kFilterDialog = 15900;
inline constexpr int kFilterButtons = 15901;
inline constexpr int kFilterOk = 15902;
inline constexpr int kFilterCancel = 15903;
inline constexpr int kFilterSelectAll = 15904;
inline constexpr int kFilterDeselectAll = 15905;
inline constexpr int kFilterDelete = 15906;
/// The number of the control that shows a filter's prompt, less the number of the prompt. The
/// filter's list has the next number.
inline constexpr int kFilterPromptOffset = 5000;
inline constexpr int kExpansionWindow = 15300;
inline constexpr int kExpansionLines = 0x8008;

// Text of the expanded-data window.
inline constexpr int kExpansionTitle = 10300;

// Texts of the write-log dialog.
inline constexpr int kWriteTitle = 10800;
inline constexpr int kWritePrompt = 10801;
inline constexpr int kWriteActionText = 10802;
inline constexpr int kWriteCancelText = 10803;

// Texts of the unload dialog.
inline constexpr int kUnloadTitle = 10600;
inline constexpr int kUnloadPrompt = 10601;
inline constexpr int kUnloadActionText = 10602;
inline constexpr int kUnloadCancelText = 10603;

// Texts of the filter dialogs: the buttons, and the prompt of each, whose title has the next
// number.
inline constexpr int kFilterOkText = 10901;
inline constexpr int kFilterCancelText = 10902;
inline constexpr int kFilterSelectAllText = 10903;
inline constexpr int kFilterDeselectAllText = 10904;
inline constexpr int kFilterDeleteText = 10905;
inline constexpr int kEntryTypePrompt = 11000;
inline constexpr int kTimePrompt = 11100;
inline constexpr int kFunctionPrompt = 11200;
inline constexpr int kDatePrompt = 11400;
inline constexpr int kPidPrompt = 11500;
inline constexpr int kTidPrompt = 11600;
inline constexpr int kMajorErrorPrompt = 11700;
inline constexpr int kMinorErrorPrompt = 11800;
inline constexpr int kDetectPointPrompt = 11900;
inline constexpr int kNoValues = 12000;        ///< stands in a list without values
inline constexpr int kNoFunctionName = 12001;  ///< stands for the empty name

// Main window: title, headings, menus and commands.
inline constexpr int kMainTitle = 10700;
inline constexpr int kHeadingEntryType = 10701;
inline constexpr int kHeadingTime = 10702;
inline constexpr int kHeadingDate = 10703;
inline constexpr int kHeadingPid = 10704;
inline constexpr int kHeadingTid = 10705;
inline constexpr int kHeadingMajorError = 10706;
inline constexpr int kHeadingMinorError = 10707;
inline constexpr int kHeadingDetectPoint = 10708;
inline constexpr int kHeadingDetectPointType = 10709;
inline constexpr int kHeadingFunction = 10710;

inline constexpr int kFileMenu = 10711;
inline constexpr int kLoad = 10712;
inline constexpr int kMerge = 10713;
inline constexpr int kUnload = 10714;
inline constexpr int kWriteLog = 10715;

inline constexpr int kEditMenu = 10718;
inline constexpr int kSelectAll = 10719;
inline constexpr int kDeselectAll = 10720;
inline constexpr int kReverseSelections = 10721;
inline constexpr int kCopy = 10722;

inline constexpr int kFiltersMenu = 10723;
inline constexpr int kEntryTypeFilter = 10724;
inline constexpr int kTimeFilter = 10725;
inline constexpr int kDateFilter = 10726;
inline constexpr int kPidFilter = 10727;
inline constexpr int kTidFilter = 10728;
inline constexpr int kMajorErrorFilter = 10729;
inline constexpr int kMinorErrorFilter = 10730;
inline constexpr int kDetectPointFilter = 10731;
inline constexpr int kFunctionFilter = 10732;
inline constexpr int kRemoveAllFilters = 10733;

inline constexpr int kColumnsMenu = 10734;
inline constexpr int kFirstColumn = 10735;  ///< the other columns follow in their order
inline constexpr int kLastColumn = 10745;

inline constexpr int kExpansionMenu = 10746;
inline constexpr int kExpand = 10747;
inline constexpr int kUnexpand = 10748;
inline constexpr int kExpandAll = 10749;
inline constexpr int kUnexpandAll = 10750;
inline constexpr int kExpandSelected = 10751;
inline constexpr int kUnexpandSelected = 10752;
inline constexpr int kExpandNonSelected = 10753;
inline constexpr int kUnexpandNonSelected = 10754;

inline constexpr int kDisplayMenu = 10755;
inline constexpr int kDisplayAll = 10756;
inline constexpr int kDisplayOnlySelected = 10757;
inline constexpr int kDisplayOnlyNonSelected = 10758;
inline constexpr int kDisplayOnlyExpanded = 10759;
inline constexpr int kDisplayOnlyNonExpanded = 10760;

/// Closes the frame; also what a system menu sends.
inline constexpr int kExit = 61536;

// File dialogs, status bar and names for assistive tools.
inline constexpr int kLoadDialogTitle = 20000;
inline constexpr int kLoadDialogAccept = 20001;
inline constexpr int kMergeDialogTitle = 20002;
inline constexpr int kMergeDialogAccept = 20003;
inline constexpr int kLogFiles = 20004;
inline constexpr int kAllFiles = 20005;
inline constexpr int kRecordsShown = 20010;  ///< %1 records of %2
inline constexpr int kLogsLoaded = 20011;    ///< %1 logs
/// The same where the table cannot show them all.
inline constexpr int kMostRecordsShown = 20012;
inline constexpr int kWritten = 12050;            ///< %1 records to the file %2
inline constexpr int kNotWritten = 12051;         ///< the file %1, because of %2
inline constexpr int kNotRead = 12052;            ///< the same
inline constexpr int kNotEnoughMemory = 12053;    ///< for a command, which changed nothing
inline constexpr int kPlaceOfRow = 12100;         ///< the log %1, entry %2
inline constexpr int kActiveFilters = 12101;      ///< their names are %1
inline constexpr int kParkedRows = 12102;         ///< %1 of them
inline constexpr int kFindings = 12103;           ///< %1 of them
inline constexpr int kFirstEntryDamaged = 12104;  ///< of the file %1
inline constexpr int kFindingsTitle = 12105;
inline constexpr int kFindingsFirstHeading = 12106;  ///< the other columns follow in their order
inline constexpr int kMoreFindings = 12110;          ///< %1 of them
// Why a record has no row.
inline constexpr int kRecordFilteredOut = 12111;
inline constexpr int kRecordParked = 12112;
inline constexpr int kRecordPastRows = 12113;
inline constexpr int kCurrentRow = 12114;  ///< is from %1
inline constexpr int kNoLogSlot = 12115;
inline constexpr int kCopied = 12150;  ///< %1 lines of %2
// Find bar and field for a time.
inline constexpr int kFindBar = 12200;
inline constexpr int kFindLabel = 12201;
inline constexpr int kFindKind = 12202;
inline constexpr int kFindText = 12203;
inline constexpr int kFindBytes = 12204;
inline constexpr int kFindExpression = 12205;
inline constexpr int kFindMatchCase = 12206;
inline constexpr int kFindPrevious = 12207;
inline constexpr int kFindNext = 12208;
inline constexpr int kFindSelectAll = 12209;
inline constexpr int kFindStop = 12210;
inline constexpr int kFindClose = 12211;
inline constexpr int kFindProgress = 12212;
inline constexpr int kFindCurrent = 12213;  ///< the match %1 of %2
inline constexpr int kFindMatches = 12214;  ///< %1 of them
inline constexpr int kFindNone = 12215;
inline constexpr int kFindSearching = 12216;
inline constexpr int kFindFromTop = 12217;
inline constexpr int kFindFromBottom = 12218;
inline constexpr int kFindStopped = 12219;
inline constexpr int kFindProblem = 12220;  ///< because of %1
inline constexpr int kFindItem = 12221;
inline constexpr int kGoToTimeBar = 12230;
inline constexpr int kGoToTimeLabel = 12231;
inline constexpr int kGoToTimeHint = 12232;  ///< %1
inline constexpr int kGoToTimeGo = 12233;
inline constexpr int kGoToTimeBad = 12234;  ///< %1
inline constexpr int kGoToTimeNone = 12235;
inline constexpr int kGoToTimeClose = 12236;
// The context menu of rows. %1 and %2 are an attribute and its value.
inline constexpr int kShowOnly = 12300;
inline constexpr int kHide = 12301;
inline constexpr int kSelectAllWith = 12302;
inline constexpr int kEntryTypeAttribute = 12303;
inline constexpr int kCopyRows = 12304;
inline constexpr int kCopyRowsWithData = 12305;
inline constexpr int kSetMark = 12306;
inline constexpr int kClearMark = 12307;
inline constexpr int kSelectMarked = 12308;
inline constexpr int kRowsCopied = 12310;    ///< %1 of them
inline constexpr int kTooManyRows = 12311;   ///< %1, while %2 can be copied
inline constexpr int kTooManyLines = 12312;  ///< of %1 rows, while %2 can be copied
// Marks.
inline constexpr int kRowIsMarked = 12315;
inline constexpr int kMarks = 12316;           ///< there are %1 now
inline constexpr int kNoMarks = 12318;         ///< among the rows
inline constexpr int kFromFirstMark = 12319;   ///< the search for a mark went on
inline constexpr int kFromLastMark = 12320;    ///< the same
inline constexpr int kPlaceInFile = 12325;     ///< the log %1, entry %2, byte %3
inline constexpr int kAfterRowBefore = 12326;  ///< a place %1, a time %2
inline constexpr int kAfterShort = 12324;      ///< the same in few characters
inline constexpr int kSelectedRows = 12327;    ///< %1 of them, from the time %2 to %3
inline constexpr int kSelectedFor = 12328;     ///< the same %1, a time %2
inline constexpr int kDaysAndTime = 12329;     ///< %1 days and the time %2
// The context menu of lines.
inline constexpr int kCopyLines = 12330;
inline constexpr int kSelectAllLines = 12331;
inline constexpr int kGoToRecord = 12332;
// The overview of the rows.
inline constexpr int kOverview = 12340;
inline constexpr int kOverviewHelp = 12341;
inline constexpr int kOverviewTip = 12342;     ///< time %1, rows %2 to %3
inline constexpr int kOverviewErrors = 12343;  ///< %1 of %2 rows
inline constexpr int kOverviewSome = 12344;    ///< about %1 percent of %2 rows
// Files that were dropped.
inline constexpr int kNotTaken = 12350;      ///< %1, each with a reason
inline constexpr int kNotTakenFile = 12351;  ///< the file %1, because of %2
inline constexpr int kNoLogFile = 12352;
// Data that are read on demand.
inline constexpr int kDataPending = 12400;
inline constexpr int kDataChanged = 12401;
inline constexpr int kDataUnreadable = 12402;
inline constexpr int kWrittenWithout = 12403;   ///< %1 records to %2, of %3 without data
inline constexpr int kLogChanged = 12404;       ///< the log %1
inline constexpr int kLogsHaveChanged = 12405;  ///< between asking for a copy and making it
inline constexpr int kNotCopied = 12406;        ///< because of %1
inline constexpr int kLinesCopied = 12407;      ///< %1 of them
// The manual.
inline constexpr int kNoManual = 12450;        ///< there is no file %1
inline constexpr int kManualNotShown = 12451;  ///< the file %1
inline constexpr int kRecordContainer = 20020;
inline constexpr int kProgress = 20021;

}  // namespace zelqId
