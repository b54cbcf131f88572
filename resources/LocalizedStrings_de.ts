<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <!-- Main window: buttons and captions -->
    <message id="IDS_BTN_ADD_FILE">
        <source>&amp;Add Movies…</source>
        <translation>Filme &amp;hinzufügen …</translation>
    </message>
    <message id="IDS_BTN_REMOVE_FILE">
        <extracomment>Removes every checked movie from the list.</extracomment>
        <source>&amp;Remove Checked</source>
        <translation>Angehakte &amp;entfernen</translation>
    </message>
    <message id="IDS_BTN_CONVERT">
        <extracomment>Also a button of the box about paused movies.</extracomment>
        <source>&amp;Convert</source>
        <translation>&amp;Umwandeln</translation>
    </message>
    <message id="IDS_BTN_STOP">
        <extracomment>Also a button of the box about a movie that could not be converted.</extracomment>
        <source>&amp;Stop</source>
        <translation>&amp;Stoppen</translation>
    </message>
    <message id="IDS_BTN_SELECT_FOLDER">
        <source>Select &amp;Folder…</source>
        <translation>Ordner aus&amp;wählen …</translation>
    </message>
    <message id="IDS_BTN_OPEN_FOLDER">
        <extracomment>Also a button of the box at the end of a conversion.</extracomment>
        <source>&amp;Open Folder</source>
        <translation>Ordner ö&amp;ffnen</translation>
    </message>
    <message id="IDS_TXTFLD_OUTPUTFOLDER">
        <source>O&amp;utput folder</source>
        <translation>&amp;Ausgabeordner</translation>
    </message>
    <message id="IDS_TXTFLD_OPNFLDRAFTRFNSH">
        <source>Open the folder &amp;when finished</source>
        <translation>O&amp;rdner am Ende öffnen</translation>
    </message>
    <message id="IDS_TXT_PROFILE_CAPTION">
        <extracomment>Caption of the quality list beside the output folder.</extracomment>
        <source>&amp;Quality of checked movies</source>
        <translation>&amp;Qualität der angehakten Filme</translation>
    </message>
    <message id="IDS_TXT_FILELIST">
        <extracomment>Two blanks and the number of movies in parentheses follow: Movies  (3).</extracomment>
        <source>&amp;Movies</source>
        <translation>Fi&amp;lme</translation>
    </message>
    <message id="IDS_TXT_EMPTY_LIST">
        <extracomment>Shown in the empty list.</extracomment>
        <source>Drop HEVC movies here, or press Add Movies…</source>
        <translation>Ziehen Sie HEVC-Filme hierher oder klicken Sie auf „Filme hinzufügen …“</translation>
    </message>
    <message id="IDS_TXT_APP_DESCRIPTION">
        <source>Turns HEVC movies into H.264 MP4 files</source>
        <translation>Wandelt HEVC-Filme in H.264-MP4-Dateien um</translation>
    </message>
    <!-- Movie list: column titles -->
    <message id="IDS_TXT_FILENAME">
        <source>File name</source>
        <translation>Dateiname</translation>
    </message>
    <message id="IDS_TXT_DURATION">
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message id="IDS_TXT_AUDIO">
        <source>Audio</source>
        <translation>Ton</translation>
    </message>
    <message id="IDS_TXTFLD_RESOLUTION">
        <extracomment>The picture size of the new movie.</extracomment>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message id="IDS_TXTFLD_QUALITY">
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message id="IDS_TXT_STATUS">
        <extracomment>Also the whole text of the box shown when a download turns out to be empty.</extracomment>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <!-- Movie list: what the status column says -->
    <message id="IDS_TXT_STATUS_WAITING">
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message id="IDS_TXT_STATUS_PAUSED">
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message id="IDS_TXT_STATUS_CONVERTED">
        <source>Converted</source>
        <translation>Umgewandelt</translation>
    </message>
    <!-- Qualities: three of each, separated by ';', best first and in the same order everywhere -->
    <message id="IDS_TXT_PROFILELIST">
        <extracomment>The ninth character of each name is a digit.</extracomment>
        <source>H.264 LV0 : Pro, for Editing (largest files);H.264 LV1 : Best Quality;H.264 LV2 : Normal Quality (smaller files)</source>
        <translation>H.264 LV0 : Profi, zum Schneiden;H.264 LV1 : Beste Qualität;H.264 LV2 : Normale Qualität</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_DROPDOWN">
        <extracomment>The three texts of IDS_TXT_PROFILELIST_1 to _3, joined by ';'.</extracomment>
        <source>Pro, for editing;Best quality;Normal quality</source>
        <translation>Profi, zum Schneiden;Beste Qualität;Normale Qualität</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_1">
        <source>Pro, for editing</source>
        <translation>Profi, zum Schneiden</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_2">
        <source>Best quality</source>
        <translation>Beste Qualität</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_3">
        <source>Normal quality</source>
        <translation>Normale Qualität</translation>
    </message>
    <!-- Message boxes: buttons -->
    <message id="IDS_BTN_POPUP_OK">
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message id="IDS_BTN_POPUP_CANCEL">
        <source>Ca&amp;ncel</source>
        <translation>Abbre&amp;chen</translation>
    </message>
    <message id="IDS_BTN_POPUP_SKIP">
        <source>Sk&amp;ip</source>
        <translation>Ü&amp;berspringen</translation>
    </message>
    <message id="IDS_BTN_POPUP_REPLACE">
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message id="IDS_BTN_POPUP_DUPLICATE">
        <extracomment>The new movie gets a number in its name.</extracomment>
        <source>Keep &amp;Both</source>
        <translation>Bei&amp;de behalten</translation>
    </message>
    <message id="IDS_BTN_POPUP_TRASH">
        <source>Move to &amp;Trash</source>
        <translation>In den &amp;Papierkorb</translation>
    </message>
    <message id="IDS_BTN_POPUP_ENDSESSION">
        <source>&amp;End Session</source>
        <translation>Sitzung &amp;beenden</translation>
    </message>
    <message id="IDS_TXT_POPUP_TRYAGAIN">
        <extracomment>A button.</extracomment>
        <source>&amp;Try Again</source>
        <translation>Erneut &amp;versuchen</translation>
    </message>
    <message id="IDS_TXT_POPUP_DOFORERROR">
        <extracomment>A check box below the buttons' question.</extracomment>
        <source>&amp;Do the same for the other movies</source>
        <translation>Für die übrigen Filme &amp;genauso verfahren</translation>
    </message>
    <!-- Message boxes: output folder -->
    <message id="IDS_TXT_SDCARD_CANNOT_BEUSED">
        <extracomment>First line; IDS_TXT_USE_ANOTHER_FOLDER follows.</extracomment>
        <source>The output folder cannot be on a memory card, a USB stick or another removable disk.</source>
        <translation>Der Ausgabeordner darf nicht auf einer Speicherkarte, einem USB-Stick oder einem anderen Wechseldatenträger liegen.</translation>
    </message>
    <message id="IDS_TXT_USE_ANOTHER_FOLDER">
        <extracomment>Second line, after IDS_TXT_SDCARD_CANNOT_BEUSED.</extracomment>
        <source>Please choose another folder, for example one in your home folder.</source>
        <translation>Bitte wählen Sie einen anderen Ordner, zum Beispiel einen in Ihrem persönlichen Ordner.</translation>
    </message>
    <message id="IDS_TXT_FAT32_UNSUPPORTED">
        <source>This folder is on a disk with the FAT file system, which cannot hold a movie larger than 4 GB.
Please choose a folder on another disk.</source>
        <translation>Dieser Ordner liegt auf einem Datenträger mit dem Dateisystem FAT, das keine Filme über 4 GB speichern kann.
Bitte wählen Sie einen Ordner auf einem anderen Datenträger.</translation>
    </message>
    <message id="IDS_BTN_POPUP_OUTFLDRUNAVAILABLE">
        <extracomment>A message, in spite of its name.</extracomment>
        <source>The output folder cannot be found. It may have been moved or deleted, or its disk is not connected.
Please press Select Folder… and choose a folder.</source>
        <translation>Der Ausgabeordner wurde nicht gefunden. Vielleicht wurde er verschoben oder gelöscht, oder sein Datenträger ist nicht angeschlossen.
Bitte klicken Sie auf „Ordner auswählen …“ und wählen Sie einen Ordner.</translation>
    </message>
    <!-- Message boxes: adding movies -->
    <message id="IDS_TXT_UNSUPPORTED">
        <extracomment>Shown once, for one file or for several.</extracomment>
        <source>Only movies with HEVC (H.265) video can be added.
Files of another kind, and damaged ones, were left out.</source>
        <translation>Nur Filme mit HEVC-Video (H.265) können hinzugefügt werden.
Andere und beschädigte Dateien wurden ausgelassen.</translation>
    </message>
    <message id="IDS_TXT_ADD_ENDED">
        <extracomment>%1 is the name of the file that ended the adding of several.</extracomment>
        <source>“%1” cannot be added.</source>
        <translation>„%1“ kann nicht hinzugefügt werden.</translation>
    </message>
    <message id="IDS_TXT_ADD_NOT_LOOKED_AT">
        <extracomment>Follows IDS_TXT_ADD_ENDED on the same line. %1 is a number.</extracomment>
        <source>Movies after it that were not looked at: %1</source>
        <translation>Danach nicht mehr geprüfte Filme: %1</translation>
    </message>
    <message id="IDS_TXT_ADDING">
        <extracomment>While movies are added: %1 is the number of the one at hand, %2 of all.</extracomment>
        <source>Adding movie %1 of %2. Escape ends it after this one.</source>
        <translation>Film %1 von %2 wird hinzugefügt. Escape beendet es nach diesem.</translation>
    </message>
    <message id="IDS_TXT_ADD_STOPPED">
        <extracomment>The user has pressed Escape while movies were added. %1 is a number.</extracomment>
        <source>Adding was ended. Movies that were left out: %1</source>
        <translation>Das Hinzufügen wurde beendet. Ausgelassene Filme: %1</translation>
    </message>
    <message id="IDS_TXT_LOOKING_FOR_MOVIES">
        <extracomment>While folders that were dropped are searched.</extracomment>
        <source>Looking for movies in folders. Escape ends it.</source>
        <translation>Filme in Ordnern werden gesucht. Escape beendet es.</translation>
    </message>
    <message id="IDS_TXT_NO_MOVIES_IN_FOLDER">
        <extracomment>A folder was dropped that holds no movie.</extracomment>
        <source>There is no movie in the folder.</source>
        <translation>Im Ordner ist kein Film.</translation>
    </message>
    <message id="IDS_TXT_TOO_MANY_MOVIES">
        <extracomment>Folders were dropped that hold more movies. %1 is a number.</extracomment>
        <source>Only the first %1 movies were taken.</source>
        <translation>Nur die ersten %1 Filme wurden genommen.</translation>
    </message>
    <message id="IDS_TXT_OPENED_LATER">
        <extracomment>A quiet line in the window during a conversion. %1 is a number.</extracomment>
        <source>Movies that will be added after the conversion: %1</source>
        <translation>Filme, die nach der Umwandlung hinzugefügt werden: %1</translation>
    </message>
    <message id="IDS_CMD_USAGE">
        <extracomment>On a terminal, like all IDS_CMD_ texts. %1 is the program's name and what can follow it.</extracomment>
        <source>Usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message id="IDS_CMD_MOVIE">
        <extracomment>What MOVIE stands for. file: is not translated.</extracomment>
        <source>A movie to be added to the list: a file or a file: address</source>
        <translation>Film, der zur Liste hinzugefügt wird: Datei oder file:-Adresse</translation>
    </message>
    <message id="IDS_CMD_HELP">
        <extracomment>What --help does.</extracomment>
        <source>Shows this help</source>
        <translation>Zeigt diese Hilfe</translation>
    </message>
    <message id="IDS_CMD_VERSION">
        <extracomment>What --version does.</extracomment>
        <source>Shows the version</source>
        <translation>Zeigt die Version</translation>
    </message>
    <message id="IDS_CMD_UNKNOWN_OPTION">
        <extracomment>%1 is what was typed, like --hlep.</extracomment>
        <source>Unknown option: %1</source>
        <translation>Unbekannte Option: %1</translation>
    </message>
    <message id="IDS_CMD_SEE_HELP">
        <extracomment>%1 is what is to be typed.</extracomment>
        <source>“%1” shows what is possible.</source>
        <translation>„%1“ zeigt, was möglich ist.</translation>
    </message>
    <message id="IDS_CMD_NO_DISPLAY">
        <extracomment>X11 and Wayland are names.</extracomment>
        <source>No window can be opened: neither an X11 nor a Wayland display can be reached.</source>
        <translation>Es kann kein Fenster geöffnet werden: Weder eine X11- noch eine Wayland-Anzeige ist erreichbar.</translation>
    </message>
    <message id="IDS_TXT_SDCARD_DELAY">
        <extracomment>First line; IDS_TXT_CONTINUE follows. Buttons: Cancel, OK.</extracomment>
        <source>This movie is on a memory card or another removable disk. Converting it from there can take longer.</source>
        <translation>Dieser Film liegt auf einer Speicherkarte oder einem anderen Wechseldatenträger. Die Umwandlung von dort kann länger dauern.</translation>
    </message>
    <message id="IDS_TXT_CONTINUE">
        <extracomment>Second line, after IDS_TXT_SDCARD_DELAY.</extracomment>
        <source>Do you want to add it all the same?</source>
        <translation>Möchten Sie ihn trotzdem hinzufügen?</translation>
    </message>
    <message id="IDS_TXT_ENCODER_MISSING">
        <source>Movies cannot be read or converted now, because the program ffmpeg is missing or may not be run.
Please install the package “ffmpeg” with your system’s software manager, then start Quorvex Reelshift again.</source>
        <translation>Zurzeit können keine Filme gelesen oder umgewandelt werden, weil das Programm ffmpeg fehlt oder nicht ausgeführt werden darf.
Bitte installieren Sie das Paket „ffmpeg“ mit der Softwareverwaltung Ihres Systems und starten Sie Quorvex Reelshift dann neu.</translation>
    </message>
    <!-- Message boxes: converting -->
    <message id="IDS_TXT_POPUP_SAMENAME">
        <extracomment>The movie's path follows on a line of its own. Buttons: Cancel, Keep Both, Skip, Replace.</extracomment>
        <source>The output folder already has a movie with this name. Cancel stops the whole conversion.</source>
        <translation>Im Ausgabeordner gibt es bereits einen Film mit diesem Namen. „Abbrechen“ stoppt die gesamte Umwandlung.</translation>
    </message>
    <message id="IDS_TXT_POPUP_ERROR">
        <extracomment>First line; IDS_TXT_POPUP_WANTTOSKIP and the movie's name follow. Buttons: Stop, Skip.</extracomment>
        <source>This movie could not be converted.</source>
        <translation>Dieser Film konnte nicht umgewandelt werden.</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOSKIP">
        <extracomment>Second line, between IDS_TXT_POPUP_ERROR and the movie's name.</extracomment>
        <source>Do you want to skip it and continue, or stop the conversion?</source>
        <translation>Möchten Sie ihn überspringen und fortfahren oder die Umwandlung stoppen?</translation>
    </message>
    <message id="IDS_TXT_POPUP_SOURCE_UNAVAILABLE">
        <extracomment>Buttons: Skip, Try Again.</extracomment>
        <source>The original movie cannot be found. It may have been moved or deleted, or its disk is not connected.
Skip this movie, or put it back and try again.</source>
        <translation>Der Originalfilm wurde nicht gefunden. Vielleicht wurde er verschoben oder gelöscht, oder sein Datenträger ist nicht angeschlossen.
Überspringen Sie diesen Film, oder legen Sie ihn zurück und versuchen Sie es erneut.</translation>
    </message>
    <message id="IDS_TXT_POPUP_UNEXPECTEDREMOVE">
        <extracomment>Buttons: OK, Try Again.</extracomment>
        <source>The original movie disappeared while it was being converted. Was its disk disconnected?
OK ends the conversion. To continue, put the movie back and choose Try Again.</source>
        <translation>Der Originalfilm ist während der Umwandlung verschwunden. Wurde sein Datenträger getrennt?
„OK“ beendet die Umwandlung. Um fortzufahren, legen Sie den Film zurück und wählen Sie „Erneut versuchen“.</translation>
    </message>
    <message id="IDS_TXT_POPUP_MEMORYFULL">
        <extracomment>First line; IDS_TXT_DATA_NOTCONVERTED follows.</extracomment>
        <source>The output folder is full, or nothing can be written there any more.</source>
        <translation>Der Ausgabeordner ist voll, oder es kann dort nichts mehr gespeichert werden.</translation>
    </message>
    <message id="IDS_TXT_DATA_NOTCONVERTED">
        <extracomment>Second line, after IDS_TXT_POPUP_MEMORYFULL.</extracomment>
        <source>The movie was not converted. Please make room or choose another folder, then press Convert again.</source>
        <translation>Der Film wurde nicht umgewandelt. Bitte schaffen Sie Platz oder wählen Sie einen anderen Ordner und klicken Sie dann erneut auf „Umwandeln“.</translation>
    </message>
    <message id="IDS_TXT_POPUP_INTERRUPTED">
        <extracomment>First line; a path follows, then IDS_TXT_POPUP_WANTTOTRASH.</extracomment>
        <source>The last conversion was interrupted. It has left an unfinished movie that cannot be played:</source>
        <translation>Die letzte Umwandlung wurde unterbrochen. Sie hat einen unvollständigen Film hinterlassen, der nicht abgespielt werden kann:</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOTRASH">
        <extracomment>Last line, after the path of IDS_TXT_POPUP_INTERRUPTED. Buttons: Cancel, Move to Trash.</extracomment>
        <source>Do you want to move it to the trash? The original movie was not touched.</source>
        <translation>Möchten Sie ihn in den Papierkorb verschieben? Der ursprüngliche Film wurde nicht angetastet.</translation>
    </message>
    <message id="IDS_TXT_POPUP_NOTTRASHED">
        <extracomment>First line; a path follows.</extracomment>
        <source>This file could not be moved to the trash. It stays where it is:</source>
        <translation>Diese Datei konnte nicht in den Papierkorb verschoben werden. Sie bleibt, wo sie ist:</translation>
    </message>
    <message id="IDS_TXT_POPUP_SESSIONENDS">
        <extracomment>A question during a run. Buttons: Cancel, End Session.</extracomment>
        <source>Movies are being converted. If the session ends now, those that are not finished have to be converted again. Do you want to end the session?</source>
        <translation>Filme werden umgewandelt. Wenn die Sitzung jetzt endet, müssen die noch nicht fertigen erneut umgewandelt werden. Möchten Sie die Sitzung beenden?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING">
        <extracomment>First line; IDS_TXT_POPUP_STOPCONVERTING2 follows. Buttons: Cancel, OK.</extracomment>
        <source>Do you want to stop the conversion?</source>
        <translation>Möchten Sie die Umwandlung stoppen?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING2">
        <extracomment>Second line, after IDS_TXT_POPUP_STOPCONVERTING.</extracomment>
        <source>Movies that are already converted are kept. An unfinished one has to be converted again from its beginning.</source>
        <translation>Bereits umgewandelte Filme bleiben erhalten. Ein nicht fertiger Film muss von Anfang an neu umgewandelt werden.</translation>
    </message>
    <message id="IDS_TXT_POPUP_PUASEDJOBS">
        <extracomment>First line; IDS_TXT_POPUP_CLICKTOCONTINUE follows. Buttons: Cancel, Convert.</extracomment>
        <source>Some movies are still paused.</source>
        <translation>Einige Filme sind noch angehalten.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CLICKTOCONTINUE">
        <extracomment>Second line, after IDS_TXT_POPUP_PUASEDJOBS.</extracomment>
        <source>Press Convert to resume them.</source>
        <translation>Klicken Sie auf „Umwandeln“, um mit ihnen fortzufahren.</translation>
    </message>
    <message id="IDS_TXT_POPUP_OPERATION_SUCCESSFUL">
        <extracomment>Shown after every run, also one that ended early. Buttons: OK, Open Folder.</extracomment>
        <source>The conversion has ended.
Converted movies are in the output folder. Movies that were not converted stay in the list.</source>
        <translation>Die Umwandlung ist beendet.
Umgewandelte Filme liegen im Ausgabeordner. Nicht umgewandelte Filme bleiben in der Liste.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CONVERSIONCOMPLETE">
        <source>Conversion complete</source>
        <translation>Umwandlung abgeschlossen</translation>
    </message>
    <!-- Update window -->
    <message id="IDS_TXT_NEWVERSION">
        <extracomment>Buttons: OK, Cancel.</extracomment>
        <source>A new version of Quorvex Reelshift is available.
Do you want to download it now? When the installer opens, Quorvex Reelshift closes.</source>
        <translation>Eine neue Version von Quorvex Reelshift ist verfügbar.
Möchten Sie sie jetzt herunterladen? Sobald sich das Installationsprogramm öffnet, wird Quorvex Reelshift beendet.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TITLE">
        <extracomment>Title of the window.</extracomment>
        <source>Quorvex Reelshift Update</source>
        <translation>Aktualisierung von Quorvex Reelshift</translation>
    </message>
    <message id="IDS_TXT_DOWNLOADING">
        <extracomment>Above the progress bar.</extracomment>
        <source>Downloading the new version…</source>
        <translation>Die neue Version wird heruntergeladen …</translation>
    </message>
    <message id="IDS_A11Y_DOWNLOAD_PROGRESS">
        <source>Download progress</source>
        <translation>Fortschritt des Downloads</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TIMEOUT">
        <source>The update server does not answer.</source>
        <translation>Der Aktualisierungsserver antwortet nicht.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_UNUSABLE">
        <source>The answer of the update server cannot be used.</source>
        <translation>Die Antwort des Aktualisierungsservers ist unbrauchbar.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_HOST">
        <source>The update server cannot be found.</source>
        <translation>Der Aktualisierungsserver ist nicht zu finden.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_SECURE">
        <source>The update server cannot prove that it is the right one.</source>
        <translation>Der Aktualisierungsserver kann nicht nachweisen, dass er der richtige ist.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_CUT">
        <source>The update server closed the connection too soon.</source>
        <translation>Der Aktualisierungsserver hat die Verbindung zu früh beendet.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_REFUSED">
        <extracomment>What the server said follows on the same line.</extracomment>
        <source>The update server answers:</source>
        <translation>Der Aktualisierungsserver antwortet:</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_DOWNLOADS">
        <source>The Downloads folder cannot be created.</source>
        <translation>Der Download-Ordner kann nicht angelegt werden.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_OPENED">
        <extracomment>First line; the path of the downloaded file follows.</extracomment>
        <source>The installer could not be opened. It is here:</source>
        <translation>Das Installationsprogramm konnte nicht geöffnet werden. Es liegt hier:</translation>
    </message>
    <!-- Panels -->
    <message id="IDS_TXT_PANEL_ADD">
        <source>Add Movies</source>
        <translation>Filme hinzufügen</translation>
    </message>
    <message id="IDS_TXT_PANEL_FILTER">
        <extracomment>The patterns in parentheses stay as they are.</extracomment>
        <source>MP4 movies (*.mp4 *.MP4)</source>
        <translation>MP4-Filme (*.mp4 *.MP4)</translation>
    </message>
    <message id="IDS_TXT_PANEL_FOLDER">
        <source>Select Output Folder</source>
        <translation>Ausgabeordner auswählen</translation>
    </message>
    <!-- Tooltips -->
    <message id="IDS_TIP_ADD_FILE">
        <source>Choose HEVC movies to add to the list</source>
        <translation>HEVC-Filme für die Liste auswählen</translation>
    </message>
    <message id="IDS_TIP_REMOVE_FILE">
        <source>Take all checked movies off the list. The files themselves stay where they are</source>
        <translation>Alle angehakten Filme aus der Liste nehmen. Die Dateien selbst bleiben, wo sie sind</translation>
    </message>
    <message id="IDS_TIP_CONVERT">
        <source>Convert every waiting movie in the list, checked or not</source>
        <translation>Alle wartenden Filme der Liste umwandeln, ob angehakt oder nicht</translation>
    </message>
    <message id="IDS_TIP_STOP">
        <source>Stop the whole conversion</source>
        <translation>Die gesamte Umwandlung stoppen</translation>
    </message>
    <message id="IDS_TIP_SELECT_FOLDER">
        <source>Choose where the converted movies are saved</source>
        <translation>Auswählen, wo die umgewandelten Filme gespeichert werden</translation>
    </message>
    <message id="IDS_TIP_OPEN_FOLDER">
        <source>Show the output folder in the file manager</source>
        <translation>Den Ausgabeordner in der Dateiverwaltung anzeigen</translation>
    </message>
    <message id="IDS_TIP_OUTPUT_FOLDER">
        <source>Converted movies are saved here</source>
        <translation>Hier werden die umgewandelten Filme gespeichert</translation>
    </message>
    <message id="IDS_TIP_OPEN_AFTER_FINISH">
        <source>The box at the end of a conversion offers to open the output folder. Opening it there clears this check mark</source>
        <translation>Am Ende der Umwandlung wird angeboten, den Ausgabeordner zu öffnen. Wird er dort geöffnet, verschwindet dieses Häkchen</translation>
    </message>
    <message id="IDS_TIP_PROFILE">
        <source>Sets the quality of all checked movies, or of the selected movie when none is checked.
Pro keeps the most detail in the largest files. Normal makes the smallest ones</source>
        <translation>Legt die Qualität aller angehakten Filme fest, oder die des ausgewählten Films, wenn keiner angehakt ist.
„Profi“ erhält die meisten Einzelheiten in den größten Dateien. „Normal“ ergibt die kleinsten</translation>
    </message>
    <message id="IDS_TIP_SELECT_ALL">
        <source>Check or uncheck all movies</source>
        <translation>Alle Filme anhaken oder alle Häkchen entfernen</translation>
    </message>
    <message id="IDS_TIP_TABLE">
        <source>Drop movies here to add them. Drag rows to change the order of conversion</source>
        <translation>Filme hierher ziehen, um sie hinzuzufügen. Zeilen ziehen, um die Reihenfolge der Umwandlung zu ändern</translation>
    </message>
    <message id="IDS_TIP_CELL_CHECK">
        <source>Checked movies take the quality chosen above the list and can be removed together</source>
        <translation>Angehakte Filme erhalten die oberhalb der Liste gewählte Qualität und können zusammen entfernt werden</translation>
    </message>
    <message id="IDS_TIP_CELL_PROFILE">
        <source>Click to choose this movie’s quality</source>
        <translation>Klicken, um die Qualität dieses Films zu wählen</translation>
    </message>
    <message id="IDS_TIP_CELL_LOCKED">
        <source>Can be chosen again after the conversion</source>
        <translation>Kann nach der Umwandlung wieder gewählt werden</translation>
    </message>
    <message id="IDS_TIP_CELL_RESOLUTION">
        <source>Click to choose this movie’s picture size</source>
        <translation>Klicken, um die Bildgröße dieses Films zu wählen</translation>
    </message>
    <message id="IDS_TIP_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1 from the list</source>
        <translation>%1 aus der Liste entfernen</translation>
    </message>
    <message id="IDS_TIP_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause the conversion of %1</source>
        <translation>Die Umwandlung von %1 anhalten</translation>
    </message>
    <message id="IDS_TIP_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume the conversion of %1</source>
        <translation>Die Umwandlung von %1 fortsetzen</translation>
    </message>
    <!-- Names that screen readers speak, for what carries no text of its own -->
    <message id="IDS_A11Y_TABLE">
        <source>Movies to convert</source>
        <translation>Umzuwandelnde Filme</translation>
    </message>
    <message id="IDS_A11Y_OUTPUT_FOLDER">
        <source>Output folder</source>
        <translation>Ausgabeordner</translation>
    </message>
    <message id="IDS_A11Y_OPEN_AFTER_FINISH">
        <source>Open the folder when finished</source>
        <translation>Ordner am Ende öffnen</translation>
    </message>
    <message id="IDS_A11Y_PROFILE">
        <source>Quality of checked movies</source>
        <translation>Qualität der angehakten Filme</translation>
    </message>
    <message id="IDS_A11Y_SELECT_ALL">
        <source>Check all movies</source>
        <translation>Alle Filme anhaken</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_CHECK">
        <source>Checked</source>
        <translation>Angehakt</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_BUTTON">
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message id="IDS_A11Y_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message id="IDS_A11Y_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause %1</source>
        <translation>%1 anhalten</translation>
    </message>
    <message id="IDS_A11Y_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume %1</source>
        <translation>%1 fortsetzen</translation>
    </message>
    <message id="IDS_TXT_CHECKED">
        <source>checked</source>
        <translation>angehakt</translation>
    </message>
    <message id="IDS_TXT_UNCHECKED">
        <source>not checked</source>
        <translation>nicht angehakt</translation>
    </message>
    <message id="IDS_TXT_ENCODER_UNSUITABLE">
        <extracomment>Shown once, like IDS_TXT_ENCODER_MISSING. libx264 is a name.</extracomment>
        <source>Movies cannot be converted now, because the installed ffmpeg has no H.264 encoder (libx264).</source>
        <translation>Zurzeit können keine Filme umgewandelt werden, weil das installierte ffmpeg keinen H.264-Encoder (libx264) enthält.</translation>
    </message>
    <message id="IDS_TXT_NOT_KEPT_AWAKE">
        <extracomment>A quiet line in the window during a conversion.</extracomment>
        <source>The computer may go to sleep during the conversion.</source>
        <translation>Der Rechner könnte während der Umwandlung in den Ruhezustand gehen.</translation>
    </message>
    <message id="IDS_TXT_KEEP_AWAKE_REASON">
        <extracomment>Told to the desktop, which may show it: why it must not go to sleep.</extracomment>
        <source>Movies are being converted</source>
        <translation>Filme werden umgewandelt</translation>
    </message>
    <message id="IDS_TXT_RUN_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Converted: %1</source>
        <translation>Umgewandelt: %1</translation>
    </message>
    <message id="IDS_TXT_RUN_NOT_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Not converted: %1</source>
        <translation>Nicht umgewandelt: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_MOVIE">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for this movie: %1</source>
        <translation>Verbleibende Zeit für diesen Film: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_RUN">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for all movies: %1</source>
        <translation>Verbleibende Zeit für alle Filme: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_HOURS">
        <extracomment>%1 hours and %2 minutes, abbreviated.</extracomment>
        <source>%1 h %2 min</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message id="IDS_TXT_LEFT_MINUTES">
        <extracomment>%1 minutes, abbreviated.</extracomment>
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message id="IDS_TXT_LEFT_SECONDS">
        <extracomment>%1 seconds, abbreviated.</extracomment>
        <source>%1 s</source>
        <translation>%1 Sek.</translation>
    </message>
    <message id="IDS_TIP_WITH_SHORTCUT">
        <extracomment>A tooltip %1 followed by the shortcut %2, for example Ctrl+O.</extracomment>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message id="IDS_MENU_HELP">
        <extracomment>In the context menu, and the title of the window that it opens.</extracomment>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message id="IDS_MENU_ABOUT">
        <extracomment>In the context menu, and the title of the window that it opens. Quorvex Reelshift is the program's name.</extracomment>
        <source>About Quorvex Reelshift</source>
        <translation>Über Quorvex Reelshift</translation>
    </message>
    <message id="IDS_MENU_COPY_DETAILS">
        <extracomment>In the context menu of a movie that was not converted: copies what is known of the failure, for a report.</extracomment>
        <source>Copy Details</source>
        <translation>Details kopieren</translation>
    </message>
    <message id="IDS_TXT_DETAILS_COPIED">
        <extracomment>A quiet line in the window, after IDS_MENU_COPY_DETAILS.</extracomment>
        <source>The details are in the clipboard.</source>
        <translation>Die Details sind in der Zwischenablage.</translation>
    </message>
    <message id="IDS_HELP_KEYS">
        <extracomment>A heading over a list of keys and what they do.</extracomment>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message id="IDS_ABOUT_ENCODER">
        <extracomment>%1 is a version, %2 a path.</extracomment>
        <source>ffmpeg: version %1, at %2</source>
        <translation>ffmpeg: Version %1, in %2</translation>
    </message>
    <message id="IDS_ABOUT_NO_ENCODER">
        <source>ffmpeg: not found</source>
        <translation>ffmpeg: nicht gefunden</translation>
    </message>
    <message id="IDS_ABOUT_USES">
        <extracomment>A list of libraries with their licences follows.</extracomment>
        <source>Used by this program, with their licences:</source>
        <translation>Verwendet werden, mit ihren Lizenzen:</translation>
    </message>
    <message id="IDS_BTN_CLOSE">
        <extracomment>The button of the windows of IDS_MENU_HELP and IDS_MENU_ABOUT.</extracomment>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message id="IDS_A11Y_ROW_STATUS">
        <extracomment>Said by a screen reader: movie %1 now has the status %2.</extracomment>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="IDS_A11Y_ROW_PROGRESS">
        <extracomment>Status of a movie while it is converted, for screen readers.</extracomment>
        <source>Converting</source>
        <translation>Wird umgewandelt</translation>
    </message>
</context>
</TS>
