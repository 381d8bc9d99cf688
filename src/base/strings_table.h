// SPDX-License-Identifier: GPL-3.0-or-later
// The interface texts: TESSARO_TEXT(name, number, Japanese, English), one line a text, in rising order of the numbers.
// The macro comes from the file that includes this one, as often as it needs; so there is no guard here.
//
//   800 ..  2999  messages, progress, undo titles
//  9000 ..  9999  texts that dialogs and reports take from here, and the causes of file errors
// 10000 and more  texts of the windows
//
// clang-format off

// waves
TESSARO_TEXT(waveFormatError, 800, "ﾌｫｰﾏｯﾄｴﾗｰ", "The wave format is not known.")
TESSARO_TEXT(waveRecordStartFailed, 802, "ｳｴｰﾌﾞ録音開始に失敗しました。", "Wave recording could not be started.")
TESSARO_TEXT(waveRootPathFailed, 808, "ｳｴｰﾌﾞ書き込み先のルートパス取得に失敗しました。", "The root path of the place for the wave file could not be found.")
TESSARO_TEXT(progressLoadWave, 813, "ｳｴｰﾌﾞﾃﾞｰﾀﾛｰﾄﾞ中...", "Loading wave data ...")
TESSARO_TEXT(progressSaveWave, 814, "ｳｴｰﾌﾞﾃﾞｰﾀｾｰﾌﾞ中...", "Saving wave data ...")

// song chunks, sampling data
TESSARO_TEXT(progressLoadScoreChunk, 890, "ｽｺｱﾁｬﾝｸﾛｰﾄﾞ中 ...", "Loading score chunk ...")
TESSARO_TEXT(progressConvertScoreChunk, 891, "TQM ｽｺｱﾁｬﾝｸ変換中 ...", "TQM: converting score chunk ...")
TESSARO_TEXT(askSampleSysexHead, 896, "ｿﾝｸﾞ内 に ｻﾝﾌﾟﾘﾝｸﾞｼｽﾃﾑｴｸｽｸﾙｰｼﾌﾞﾃﾞｰﾀ が 含まれています。\n送信しますか？\n約", "The song contains sampling system exclusive data.\nSend it now?\nThis takes about ")
TESSARO_TEXT(askSampleSysexTail, 897, "秒かかります。", " seconds.")
TESSARO_TEXT(progressLoadStyleChunk, 898, "ｽﾀｲﾙﾁｬﾝｸﾛｰﾄﾞ中 ...", "Loading style chunk ...")
TESSARO_TEXT(progressConvertStyleChunk, 899, "TQM ｽﾀｲﾙﾁｬﾝｸ変換中 ...", "TQM: converting style chunk ...")

// application and document
TESSARO_TEXT(alreadyRunning, 900, "すでに起動しています", "Tessaro is already running.")
TESSARO_TEXT(formatNotSupported, 904, "このﾌｧｲﾙのﾌｫｰﾏｯﾄはｻﾎﾟｰﾄしていません。", "The format of this file is not supported.")
TESSARO_TEXT(editorInitializeError, 905, "Editor Initialize Error", "The editor could not be set up.")
TESSARO_TEXT(saveFailed, 911, "ｾｰﾌﾞに失敗しました。", "The song could not be saved.")
TESSARO_TEXT(badEvent, 912, "このﾌｧｲﾙのﾌｫｰﾏｯﾄはｻﾎﾟｰﾄしていません。", "The format of this file is not supported.")
TESSARO_TEXT(outOfMemory, 914, "ﾒﾓﾘｰが足りません。", "There is not enough memory.")

// undo and edits
TESSARO_TEXT(undoFailed, 915, "ｱﾝﾄﾞｩに失敗しました。", "Undo failed.")
TESSARO_TEXT(redoFailed, 916, "ﾘﾄﾞｩに失敗しました。", "Redo failed.")
TESSARO_TEXT(notUndoable, 917, "この操作はｱﾝﾄﾞｩできません。", "This operation cannot be undone.")
TESSARO_TEXT(askDropUndo, 918, "ｱﾝﾄﾞｩﾊﾞｯﾌｧｰを削除します。\nよろしいですか。", "The undo history will be deleted.\nGo on?")
TESSARO_TEXT(undoRecordFailed, 919, "ｱﾝﾄﾞｩ・ﾘﾄﾞｩに失敗しました。\nｱﾝﾄﾞｩﾊﾞｯﾌｧｰを削除します。", "Undo and redo failed.\nThe undo history is deleted.")
TESSARO_TEXT(askDeleteLinks, 921, "ﾃﾞﾘｰﾄされるﾘﾝｸﾌﾞﾛｯｸがあります。\nよろしいですか。", "Some linked blocks will be deleted.\nGo on?")
TESSARO_TEXT(badNumerator, 922, "分子が誤っています。", "The numerator is not valid.")
TESSARO_TEXT(badDenominator, 923, "分母が大きすぎます｡", "The denominator is too large.")
TESSARO_TEXT(eventNotMovable, 925, "移動できないｲﾍﾞﾝﾄがあります。", "Some events cannot be moved.")
TESSARO_TEXT(eventNotDeletable, 927, "このイベントは削除できません。", "This event cannot be deleted.")

// progress of files
TESSARO_TEXT(progressLoadBlockChunk, 930, "ﾌﾞﾛｯｸﾁｬﾝｸﾛｰﾄﾞ中 ...", "Loading block chunk ...")
TESSARO_TEXT(progressLoadTrackChunk, 931, "ﾄﾗｯｸﾁｬﾝｸﾛｰﾄﾞ中 ...", "Loading track chunk ...")
TESSARO_TEXT(progressLoadSmf0, 932, "SMF 0 ﾛｰﾄﾞ中 ...", "Loading SMF 0 ...")
TESSARO_TEXT(progressLoadSmf1, 933, "SMF 1 ﾛｰﾄﾞ中 ...", "Loading SMF 1 ...")
TESSARO_TEXT(progressLoadZpInfo, 934, "ZP ｲﾝﾌｫﾒｰｼｮﾝﾍｯﾀﾞｰﾛｰﾄﾞ中 ...", "ZP: loading information header ...")
TESSARO_TEXT(progressLoadZpKaraoke, 935, "ZP ｶﾗｵｹﾒｯｾｰｼﾞﾛｰﾄﾞ中 ...", "ZP: loading karaoke messages ...")
TESSARO_TEXT(progressSaveSmf0, 937, "SMF 0 ｾｰﾌﾞ中 ...", "Saving SMF 0 ...")
TESSARO_TEXT(progressSaveSmf1, 938, "SMF 1 ｾｰﾌﾞ中 ...", "Saving SMF 1 ...")
TESSARO_TEXT(progressSaveZpInfo, 939, "ZP ｲﾝﾌｫﾒｰｼｮﾝﾍｯﾀﾞｰｾｰﾌﾞ中 ...", "ZP: saving information header ...")
TESSARO_TEXT(progressSaveZpKaraoke, 940, "ZP ｶﾗｵｹﾒｯｾｰｼﾞｾｰﾌﾞ中 ...", "ZP: saving karaoke messages ...")
TESSARO_TEXT(progressConvertBlockChunk, 942, "TQM ﾌﾞﾛｯｸﾁｬﾝｸ変換中 ...", "TQM: converting block chunk ...")
TESSARO_TEXT(progressConvertTrackChunk, 943, "TQM ﾄﾗｯｸﾁｬﾝｸ変換中 ...", "TQM: converting track chunk ...")
TESSARO_TEXT(progressUndo, 944, "ｱﾝﾄﾞｩ実行中 ...", "Undoing ...")

// score
TESSARO_TEXT(measureNotShown, 950, "表示できません\n表示ｸｵﾝﾀｲｽﾞを変更します。", "This measure cannot be shown.\nThe display quantise will be changed.")

// devices
TESSARO_TEXT(midiInFailed, 952, "Midi In ﾄﾞﾗｲﾊﾞｰｵｰﾌﾟﾝに失敗しました。", "The MIDI In driver could not be opened.")
TESSARO_TEXT(midiOutFailed, 953, "Midi Out ﾄﾞﾗｲﾊﾞｰｵｰﾌﾟﾝに失敗しました。", "The MIDI Out driver could not be opened.")
TESSARO_TEXT(midiThruFailed, 954, "Midi Thru ﾄﾞﾗｲﾊﾞｰｵｰﾌﾟﾝに失敗しました。", "The MIDI Thru driver could not be opened.")
TESSARO_TEXT(midiReceiveError, 958, "MIDI受信エラーが起きました", "An error occurred while receiving MIDI.")

// titles of undo steps
TESSARO_TEXT(undoEventChange, 959, "ｲﾍﾞﾝﾄ変更", "Change event")
TESSARO_TEXT(undoEventMove, 960, "ｲﾍﾞﾝﾄ移動", "Move event")
TESSARO_TEXT(undoEventDelete, 961, "ｲﾍﾞﾝﾄ削除", "Delete event")
TESSARO_TEXT(undoEventInsert, 962, "ｲﾍﾞﾝﾄ挿入", "Insert event")
TESSARO_TEXT(undoEventCut, 963, "ｲﾍﾞﾝﾄ切り取り", "Cut event")
TESSARO_TEXT(undoEventPaste, 964, "ｲﾍﾞﾝﾄ貼り付け", "Paste event")
TESSARO_TEXT(undoNoteJoin, 965, "ﾉｰﾄ連結", "Join notes")
TESSARO_TEXT(undoNoteSplit, 966, "ﾉｰﾄ分割", "Split note")
TESSARO_TEXT(undoDragDrop, 967, "ﾄﾞﾗｯｸﾞ＆ﾄﾞﾛｯﾌﾟ", "Drag and drop")
TESSARO_TEXT(undoBlockNew, 968, "ﾌﾞﾛｯｸ新規作成", "New block")
TESSARO_TEXT(undoBlockDelete, 969, "ﾌﾞﾛｯｸ削除", "Delete block")
TESSARO_TEXT(undoBlockCopy, 970, "ﾌﾞﾛｯｸｺﾋﾟｰ", "Copy block")
TESSARO_TEXT(undoBlockLink, 971, "ﾘﾝｸﾌﾞﾛｯｸ作成", "Make linked block")
TESSARO_TEXT(undoBlockMove, 972, "ﾌﾞﾛｯｸ移動", "Move block")
TESSARO_TEXT(undoBlockMerge, 973, "ﾌﾞﾛｯｸﾏｰｼﾞ", "Merge blocks")
TESSARO_TEXT(undoBlockJoin, 974, "ﾌﾞﾛｯｸ連結", "Join blocks")
TESSARO_TEXT(undoBlockSplit, 975, "ﾌﾞﾛｯｸ分割", "Split block")
TESSARO_TEXT(undoBlockRealize, 976, "ﾌﾞﾛｯｸ実体化", "Make block real")
TESSARO_TEXT(undoBlockResize, 977, "ﾌﾞﾛｯｸｻｲｽﾞ変更", "Resize block")
TESSARO_TEXT(undoBlockCut, 978, "ﾌﾞﾛｯｸ切り取り", "Cut block")
TESSARO_TEXT(undoBlockPaste, 979, "ﾌﾞﾛｯｸ貼り付け", "Paste block")
TESSARO_TEXT(undoTrackMove, 980, "ﾄﾗｯｸ移動", "Move track")
TESSARO_TEXT(undoTranspose, 981, "ﾄﾗﾝｽﾎﾟｰｽﾞ", "Transpose")
TESSARO_TEXT(undoVelocity, 982, "ﾍﾞﾛｼﾃｨ変更", "Change velocity")
TESSARO_TEXT(undoGateTime, 983, "ｹﾞｰﾄﾀｲﾑ変更", "Change gate time")
TESSARO_TEXT(undoMove, 984, "移動", "Move")
TESSARO_TEXT(undoChordSort, 985, "ｺｰﾄﾞｿｰﾄ", "Sort chords")
TESSARO_TEXT(undoChordSeparate, 986, "ｺｰﾄﾞ分離", "Separate chords")
TESSARO_TEXT(undoThinOut, 987, "ｼﾝｱｳﾄ", "Thin out")
TESSARO_TEXT(undoQuantize, 988, "ｸｵﾝﾀｲｽﾞ", "Quantise")

// refusals and errors of views and recording
TESSARO_TEXT(linkedBlockNotEditable, 989, "ﾘﾝｸﾌﾞﾛｯｸは編集できません。", "A linked block cannot be edited.")
TESSARO_TEXT(waveRecordError, 990, "Wave Rec Error", "An error occurred while recording a wave.")
TESSARO_TEXT(noStepInputOnWave, 991, "ｳｪｰﾌﾞﾄﾗｯｸにはｽﾃｯﾌﾟ入力できません", "Step input is not possible on a wave track.")
TESSARO_TEXT(armTrackFirst, 992, "先にﾄﾗｯｸのRECﾎﾞﾀﾝをｵﾝしてください", "Switch on the REC button of a track first.")
TESSARO_TEXT(systemSetup, 993, "ｼｽﾃﾑｾｯﾄｱｯﾌﾟ", "System setup")
TESSARO_TEXT(timerError, 994, "LOOM Timer Error", "The timer of the real-time engine could not be started.")

// edit menu
TESSARO_TEXT(menuUndo, 1582, "元に戻す(&U)", "&Undo")
TESSARO_TEXT(menuUndoKey, 1583, "\tCtrl+Z", "\tCtrl+Z")
TESSARO_TEXT(menuUndoNothing, 1584, "元に戻す(&U)\tCtrl+Z", "&Undo\tCtrl+Z")
TESSARO_TEXT(menuRedo, 1585, "やり直し(&R)", "&Redo")
TESSARO_TEXT(menuRedoKey, 1586, "\tCtrl+Y", "\tCtrl+Y")
TESSARO_TEXT(menuRedoNothing, 1587, "やり直し(&R)\tCtrl+Y", "&Redo\tCtrl+Y")

TESSARO_TEXT(blockTypeDiffers, 2903, "ブロックタイプが異なります", "The type of the block differs.")

// dialogs
TESSARO_TEXT(openFilter, 9000, "Tessaro & SMF & ZP File (*.TQM & *.MID)|*.TQM; *.MID|Tessaro Original File (*.TQM)|*.TQM|SMF & ZP File (*.MID)|*.MID|All Files (*.*)|*.*||", "Tessaro & SMF & ZP File (*.TQM & *.MID)|*.TQM; *.MID|Tessaro Original File (*.TQM)|*.TQM|SMF & ZP File (*.MID)|*.MID|All Files (*.*)|*.*||")
TESSARO_TEXT(saveFilter, 9001, "Tessaro Original File (*.TQM)|*.TQM|Tessaro Original File with Wave(*.TQM)|*.TQM|SMF File Format 0 (*.MID)|*.MID|SMF File Format 1 (*.MID)|*.MID|ZP File (*.MID)|*.MID|VB SEQ Player File(*.MID)|*.MID||", "Tessaro Original File (*.TQM)|*.TQM|Tessaro Original File with Wave(*.TQM)|*.TQM|SMF File Format 0 (*.MID)|*.MID|SMF File Format 1 (*.MID)|*.MID|ZP File (*.MID)|*.MID|VB SEQ Player File(*.MID)|*.MID||")
TESSARO_TEXT(controlPanel, 9002, "Control Panel", "Control Panel")
TESSARO_TEXT(tooManyDrivers, 9003, "Too many driver", "Too many driver")
TESSARO_TEXT(noDevice, 9004, "---", "---")

// causes of a file error, in the order of their numbers
TESSARO_TEXT(fileCauseUndefined, 9101, "未定義エラー", "Undefined error")
TESSARO_TEXT(fileCauseFileNotDefined, 9102, "ファイル未定義", "File not defined")
TESSARO_TEXT(fileCauseBadPath, 9103, "不正パス", "Bad path")
TESSARO_TEXT(fileCauseTooManyOpen, 9104, "オープン ファイル数超過", "Too many open files")
TESSARO_TEXT(fileCauseAccessDenied, 9105, "ファイル アクセス禁止", "Access to the file denied")
TESSARO_TEXT(fileCauseBadHandle, 9106, "不正ファイル ハンドル使用", "Bad file handle")
TESSARO_TEXT(fileCauseRemoveCurrentDirectory, 9107, "作業中のカレント ディレクトリの削除不可", "The current directory cannot be deleted")
TESSARO_TEXT(fileCauseDirectoryFull, 9108, "ディレクトリ フル", "Directory full")
TESSARO_TEXT(fileCauseBadSeek, 9109, "ファイル ポインタ設定エラー", "The file pointer could not be set")
TESSARO_TEXT(fileCauseHardware, 9110, "ハードウェア エラー", "Hardware error")
TESSARO_TEXT(fileCauseSharingViolation, 9111, "SHARE.EXE 未ロードまたは共有領域ロック済み", "Sharing not loaded, or shared area locked")
TESSARO_TEXT(fileCauseLockViolation, 9112, "ロック済み領域のロック要求", "Lock of an area that is locked already")
TESSARO_TEXT(fileCauseDiskFull, 9113, "ディスク フル", "Disk full")
TESSARO_TEXT(fileCauseEndOfFile, 9114, "ファイルの終わりに到達", "End of file reached")

// files, in plain words
TESSARO_TEXT(fileNotFound, 9201, "ファイルが見つかりません。", "The file was not found.")
TESSARO_TEXT(fileIsDirectory, 9202, "ファイルではなくフォルダーです。", "This is a folder, not a file.")
TESSARO_TEXT(fileNotRegular, 9203, "通常のファイルではありません。", "This is not a regular file.")
TESSARO_TEXT(fileNoPermission, 9204, "アクセスする権限がありません。", "Permission is missing.")
TESSARO_TEXT(fileTooLarge, 9205, "ファイルが大きすぎます。", "The file is too large.")
TESSARO_TEXT(fileDiskFull, 9206, "ディスクに空きがありません。", "The disk is full.")
TESSARO_TEXT(fileFailed, 9207, "ファイルの読み書きに失敗しました。", "Reading or writing the file failed.")
TESSARO_TEXT(songPartsLeftOut, 9210, "空きトラックが足りないため、一部を読み込みませんでした。", "All 100 tracks are in use; parts of the file were left out.")

// windows
TESSARO_TEXT(menuFile, 10000, "ファイル(&F)", "&File")
TESSARO_TEXT(menuTransport, 10001, "トランスポート(&T)", "&Transport")
TESSARO_TEXT(menuView, 10002, "表示(&V)", "&View")
TESSARO_TEXT(menuHelp, 10003, "ヘルプ(&H)", "&Help")
TESSARO_TEXT(menuRecent, 10004, "最近使ったファイル(&R)", "Open &Recent")
TESSARO_TEXT(menuAppearance, 10005, "外観(&A)", "&Appearance")
TESSARO_TEXT(menuLanguage, 10006, "言語(&L)", "&Language")

TESSARO_TEXT(commandNew, 10010, "新規(&N)", "&New")
TESSARO_TEXT(commandOpen, 10011, "開く(&O)…", "&Open…")
TESSARO_TEXT(commandQuit, 10012, "終了(&Q)", "&Quit")
TESSARO_TEXT(recentNone, 10013, "まだありません", "Nothing yet")
TESSARO_TEXT(commandTop, 10014, "先頭へ(&T)", "Go to &Top")
TESSARO_TEXT(commandPlay, 10015, "再生(&P)", "&Play")
TESSARO_TEXT(commandStop, 10016, "停止(&S)", "&Stop")
TESSARO_TEXT(commandLoop, 10017, "ループ(&L)", "&Loop")
TESSARO_TEXT(commandMetronome, 10018, "メトロノーム(&M)", "&Metronome")
TESSARO_TEXT(commandMute, 10019, "ミュート", "Mute")
TESSARO_TEXT(commandSolo, 10020, "ソロ", "Solo")
TESSARO_TEXT(commandKeys, 10021, "キーボードショートカット(&K)", "&Keyboard Shortcuts")
TESSARO_TEXT(commandAbout, 10022, "Tessaro について(&A)", "&About Tessaro")
TESSARO_TEXT(appearanceDesktop, 10023, "デスクトップに合わせる(&D)", "Follow the &Desktop")
TESSARO_TEXT(appearanceLight, 10024, "明るい(&L)", "&Light")
TESSARO_TEXT(appearanceDark, 10025, "暗い(&K)", "Dar&k")
TESSARO_TEXT(languageDesktop, 10026, "デスクトップに合わせる(&D)", "Follow the &Desktop")
TESSARO_TEXT(languageJapanese, 10027, "日本語(&J)", "&日本語")
TESSARO_TEXT(languageEnglish, 10028, "&English", "&English")
TESSARO_TEXT(commandBack, 10029, "再生を始めた位置へ(&B)", "&Back to Where Play Began")

TESSARO_TEXT(captionLocation, 10040, "小節:拍:ティック", "Bar:Beat:Tick")
TESSARO_TEXT(captionClock, 10041, "時間", "Time")
TESSARO_TEXT(captionTempo, 10042, "テンポ", "Tempo")
TESSARO_TEXT(captionSignature, 10043, "拍子", "Meter")
TESSARO_TEXT(columnLight, 10044, "発音", "Activity")
TESSARO_TEXT(columnNumber, 10045, "番号", "No.")
TESSARO_TEXT(columnName, 10046, "トラック名", "Track")
TESSARO_TEXT(columnPort, 10047, "ポート", "Port")
TESSARO_TEXT(columnChannel, 10048, "Ch", "Ch")
TESSARO_TEXT(columnMute, 10049, "M", "M")
TESSARO_TEXT(columnSolo, 10050, "S", "S")
TESSARO_TEXT(paneOverview, 10051, "曲の全体", "Song overview")
TESSARO_TEXT(paneTransport, 10052, "トランスポート", "Transport")
TESSARO_TEXT(paneTracks, 10053, "トラック一覧", "Tracks")

TESSARO_TEXT(tipMute, 10060, "ミュート (M)", "Mute (M)")
TESSARO_TEXT(tipSolo, 10061, "ソロ (S)", "Solo (S)")
TESSARO_TEXT(tipOverview, 10062, "クリックで移動、ドラッグでループ範囲を指定 (Shift で小節線に合わせない)", "Click to go there, drag to mark a loop (Shift: between bar lines too)")
TESSARO_TEXT(tipLight, 10063, "音が出ると光ります", "Shines when the track plays")
TESSARO_TEXT(tipPort, 10064, "ポート %1: %2", "Port %1: %2")

TESSARO_TEXT(emptySong, 10080, "「ファイル > 開く」で曲を開くか、ここにファイルをドロップしてください。", "Open a song with File > Open, or drop a file here.")
TESSARO_TEXT(songLoaded, 10082, "%1 トラック、%2 小節、%3", "%1 tracks, %2 bars, %3")
TESSARO_TEXT(aboutText, 10085, "<b>Tessaro %1</b><br>MIDI とオーディオのシーケンサー。<br><br>GNU General Public License バージョン 3 以降に基づく自由ソフトウェアです。", "<b>Tessaro %1</b><br>A sequencer for MIDI and audio.<br><br>Free software under the GNU General Public License, version 3 or later.")
TESSARO_TEXT(songUntitled, 10086, "無題", "Untitled")
TESSARO_TEXT(trackUnnamed, 10087, "トラック %1", "Track %1")

TESSARO_TEXT(stateOn, 10100, "オン", "on")
TESSARO_TEXT(stateOff, 10101, "オフ", "off")
TESSARO_TEXT(realtimeRefused, 10102, "リアルタイム優先度は使えません。", "Real-time priority was refused.")

TESSARO_TEXT(soundReady, 10110, "音: 内蔵シンセ。", "Sound: built-in synth.")
TESSARO_TEXT(soundStarting, 10111, "音の出力を準備しています。", "Sound is being started.")
TESSARO_TEXT(soundPlaying, 10112, "音: 内蔵シンセ → %1、%2 Hz。", "Sound: built-in synth through %1, %2 Hz.")
TESSARO_TEXT(soundSilent, 10113, "サウンドカードが見つからないため、音は出ません。", "No sound card was found; the built-in synth plays silently.")
TESSARO_TEXT(soundLost, 10114, "音の出力が失われました。つなぎ直しています。", "Sound was lost and is being restarted.")
TESSARO_TEXT(soundNone, 10115, "音が出せません: %1。", "No sound: %1.")
TESSARO_TEXT(midiThrough, 10116, "MIDI: %1。", "MIDI: %1.")
TESSARO_TEXT(midiNone, 10117, "MIDI サービスが見つかりません。", "No MIDI service was found.")

// the start
TESSARO_TEXT(commandLineNotSupported, 61473, "このコマンドラインは使えません。", "This command line is not supported.")
