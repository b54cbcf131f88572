<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl" sourcelanguage="en">
<context>
    <name></name>
    <!-- Main window: buttons and captions -->
    <message id="IDS_BTN_ADD_FILE">
        <source>&amp;Add Movies…</source>
        <translation>Films &amp;toevoegen…</translation>
    </message>
    <message id="IDS_BTN_REMOVE_FILE">
        <extracomment>Removes every checked movie from the list.</extracomment>
        <source>&amp;Remove Checked</source>
        <translation>Aangevinkte ver&amp;wijderen</translation>
    </message>
    <message id="IDS_BTN_CONVERT">
        <extracomment>Also a button of the box about paused movies.</extracomment>
        <source>&amp;Convert</source>
        <translation>&amp;Omzetten</translation>
    </message>
    <message id="IDS_BTN_STOP">
        <extracomment>Also a button of the box about a movie that could not be converted.</extracomment>
        <source>&amp;Stop</source>
        <translation>&amp;Stoppen</translation>
    </message>
    <message id="IDS_BTN_SELECT_FOLDER">
        <source>Select &amp;Folder…</source>
        <translation>Map kie&amp;zen…</translation>
    </message>
    <message id="IDS_BTN_OPEN_FOLDER">
        <extracomment>Also a button of the box at the end of a conversion.</extracomment>
        <source>&amp;Open Folder</source>
        <translation>Ma&amp;p openen</translation>
    </message>
    <message id="IDS_TXTFLD_OUTPUTFOLDER">
        <source>O&amp;utput folder</source>
        <translation>&amp;Uitvoermap</translation>
    </message>
    <message id="IDS_TXTFLD_OPNFLDRAFTRFNSH">
        <source>Open the folder &amp;when finished</source>
        <translation>Map openen na a&amp;floop</translation>
    </message>
    <message id="IDS_TXT_PROFILE_CAPTION">
        <extracomment>Caption of the quality list beside the output folder.</extracomment>
        <source>&amp;Quality of checked movies</source>
        <translation>&amp;Kwaliteit van aangevinkte films</translation>
    </message>
    <message id="IDS_TXT_FILELIST">
        <extracomment>Two blanks and the number of movies in parentheses follow: Movies  (3).</extracomment>
        <source>&amp;Movies</source>
        <translation>Fil&amp;ms</translation>
    </message>
    <message id="IDS_TXT_EMPTY_LIST">
        <extracomment>Shown in the empty list.</extracomment>
        <source>Drop HEVC movies here, or press Add Movies…</source>
        <translation>Sleep HEVC-films hierheen, of klik op ‘Films toevoegen…’</translation>
    </message>
    <message id="IDS_TXT_APP_DESCRIPTION">
        <source>Turns HEVC movies into H.264 MP4 files</source>
        <translation>Zet HEVC-films om in H.264-MP4-bestanden</translation>
    </message>
    <!-- Movie list: column titles -->
    <message id="IDS_TXT_FILENAME">
        <source>File name</source>
        <translation>Bestandsnaam</translation>
    </message>
    <message id="IDS_TXT_DURATION">
        <source>Duration</source>
        <translation>Duur</translation>
    </message>
    <message id="IDS_TXT_AUDIO">
        <source>Audio</source>
        <translation>Geluid</translation>
    </message>
    <message id="IDS_TXTFLD_RESOLUTION">
        <extracomment>The picture size of the new movie.</extracomment>
        <source>Resolution</source>
        <translation>Resolutie</translation>
    </message>
    <message id="IDS_TXTFLD_QUALITY">
        <source>Quality</source>
        <translation>Kwaliteit</translation>
    </message>
    <message id="IDS_TXT_STATUS">
        <extracomment>Also the whole text of the box shown when a download turns out to be empty.</extracomment>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <!-- Movie list: what the status column says -->
    <message id="IDS_TXT_STATUS_WAITING">
        <source>Waiting</source>
        <translation>In wachtrij</translation>
    </message>
    <message id="IDS_TXT_STATUS_PAUSED">
        <source>Paused</source>
        <translation>Gepauzeerd</translation>
    </message>
    <message id="IDS_TXT_STATUS_CONVERTED">
        <source>Converted</source>
        <translation>Omgezet</translation>
    </message>
    <!-- Qualities: three of each, separated by ';', best first and in the same order everywhere -->
    <message id="IDS_TXT_PROFILELIST">
        <extracomment>The ninth character of each name is a digit.</extracomment>
        <source>H.264 LV0 : Pro, for Editing (largest files);H.264 LV1 : Best Quality;H.264 LV2 : Normal Quality (smaller files)</source>
        <translation>H.264 LV0 : Pro, voor montage;H.264 LV1 : Beste kwaliteit;H.264 LV2 : Normale kwaliteit</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_DROPDOWN">
        <extracomment>The three texts of IDS_TXT_PROFILELIST_1 to _3, joined by ';'.</extracomment>
        <source>Pro, for editing;Best quality;Normal quality</source>
        <translation>Pro, voor montage;Beste kwaliteit;Normale kwaliteit</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_1">
        <source>Pro, for editing</source>
        <translation>Pro, voor montage</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_2">
        <source>Best quality</source>
        <translation>Beste kwaliteit</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_3">
        <source>Normal quality</source>
        <translation>Normale kwaliteit</translation>
    </message>
    <!-- Message boxes: buttons -->
    <message id="IDS_BTN_POPUP_OK">
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message id="IDS_BTN_POPUP_CANCEL">
        <source>Ca&amp;ncel</source>
        <translation>&amp;Annuleren</translation>
    </message>
    <message id="IDS_BTN_POPUP_SKIP">
        <source>Sk&amp;ip</source>
        <translation>Overs&amp;laan</translation>
    </message>
    <message id="IDS_BTN_POPUP_REPLACE">
        <source>&amp;Replace</source>
        <translation>&amp;Vervangen</translation>
    </message>
    <message id="IDS_BTN_POPUP_DUPLICATE">
        <extracomment>The new movie gets a number in its name.</extracomment>
        <source>Keep &amp;Both</source>
        <translation>&amp;Beide behouden</translation>
    </message>
    <message id="IDS_BTN_POPUP_TRASH">
        <source>Move to &amp;Trash</source>
        <translation>Naar &amp;prullenbak</translation>
    </message>
    <message id="IDS_BTN_POPUP_ENDSESSION">
        <source>&amp;End Session</source>
        <translation>Sessie &amp;beëindigen</translation>
    </message>
    <message id="IDS_TXT_POPUP_TRYAGAIN">
        <extracomment>A button.</extracomment>
        <source>&amp;Try Again</source>
        <translation>&amp;Opnieuw proberen</translation>
    </message>
    <message id="IDS_TXT_POPUP_DOFORERROR">
        <extracomment>A check box below the buttons' question.</extracomment>
        <source>&amp;Do the same for the other movies</source>
        <translation>&amp;Hetzelfde doen voor de andere films</translation>
    </message>
    <!-- Message boxes: output folder -->
    <message id="IDS_TXT_SDCARD_CANNOT_BEUSED">
        <extracomment>First line; IDS_TXT_USE_ANOTHER_FOLDER follows.</extracomment>
        <source>The output folder cannot be on a memory card, a USB stick or another removable disk.</source>
        <translation>De uitvoermap kan niet op een geheugenkaart, een USB-stick of een andere verwijderbare schijf staan.</translation>
    </message>
    <message id="IDS_TXT_USE_ANOTHER_FOLDER">
        <extracomment>Second line, after IDS_TXT_SDCARD_CANNOT_BEUSED.</extracomment>
        <source>Please choose another folder, for example one in your home folder.</source>
        <translation>Kies een andere map, bijvoorbeeld een map in uw persoonlijke map.</translation>
    </message>
    <message id="IDS_TXT_FAT32_UNSUPPORTED">
        <source>This folder is on a disk with the FAT file system, which cannot hold a movie larger than 4 GB.
Please choose a folder on another disk.</source>
        <translation>Deze map staat op een schijf met het FAT-bestandssysteem, waarop een film van meer dan 4 GB niet past.
Kies een map op een andere schijf.</translation>
    </message>
    <message id="IDS_BTN_POPUP_OUTFLDRUNAVAILABLE">
        <extracomment>A message, in spite of its name.</extracomment>
        <source>The output folder cannot be found. It may have been moved or deleted, or its disk is not connected.
Please press Select Folder… and choose a folder.</source>
        <translation>De uitvoermap is niet gevonden. Misschien is deze verplaatst of verwijderd, of is de schijf niet aangesloten.
Klik op ‘Map kiezen…’ en kies een map.</translation>
    </message>
    <!-- Message boxes: adding movies -->
    <message id="IDS_TXT_UNSUPPORTED">
        <extracomment>Shown once, for one file or for several.</extracomment>
        <source>Only movies with HEVC (H.265) video can be added.
Files of another kind, and damaged ones, were left out.</source>
        <translation>Alleen films met HEVC-video (H.265) kunnen worden toegevoegd.
Andere bestanden en beschadigde bestanden zijn overgeslagen.</translation>
    </message>
    <message id="IDS_TXT_ADD_ENDED">
        <extracomment>%1 is the name of the file that ended the adding of several.</extracomment>
        <source>“%1” cannot be added.</source>
        <translation>‘%1’ kan niet worden toegevoegd.</translation>
    </message>
    <message id="IDS_TXT_ADD_NOT_LOOKED_AT">
        <extracomment>Follows IDS_TXT_ADD_ENDED on the same line. %1 is a number.</extracomment>
        <source>Movies after it that were not looked at: %1</source>
        <translation>Films daarna die niet zijn bekeken: %1</translation>
    </message>
    <message id="IDS_TXT_ADDING">
        <extracomment>While movies are added: %1 is the number of the one at hand, %2 of all.</extracomment>
        <source>Adding movie %1 of %2. Escape ends it after this one.</source>
        <translation>Film %1 van %2 wordt toegevoegd. Escape stopt na deze film.</translation>
    </message>
    <message id="IDS_TXT_ADD_STOPPED">
        <extracomment>The user has pressed Escape while movies were added. %1 is a number.</extracomment>
        <source>Adding was ended. Movies that were left out: %1</source>
        <translation>Het toevoegen is beëindigd. Overgeslagen films: %1</translation>
    </message>
    <message id="IDS_TXT_LOOKING_FOR_MOVIES">
        <extracomment>While folders that were dropped are searched.</extracomment>
        <source>Looking for movies in folders. Escape ends it.</source>
        <translation>Films in mappen worden gezocht. Escape stopt.</translation>
    </message>
    <message id="IDS_TXT_NO_MOVIES_IN_FOLDER">
        <extracomment>A folder was dropped that holds no movie.</extracomment>
        <source>There is no movie in the folder.</source>
        <translation>Er is geen film in de map.</translation>
    </message>
    <message id="IDS_TXT_TOO_MANY_MOVIES">
        <extracomment>Folders were dropped that hold more movies. %1 is a number.</extracomment>
        <source>Only the first %1 movies were taken.</source>
        <translation>Alleen de eerste %1 films zijn genomen.</translation>
    </message>
    <message id="IDS_TXT_OPENED_LATER">
        <extracomment>A quiet line in the window during a conversion. %1 is a number.</extracomment>
        <source>Movies that will be added after the conversion: %1</source>
        <translation>Films die na het omzetten worden toegevoegd: %1</translation>
    </message>
    <message id="IDS_CMD_USAGE">
        <extracomment>On a terminal, like all IDS_CMD_ texts. %1 is the program's name and what can follow it.</extracomment>
        <source>Usage: %1</source>
        <translation>Gebruik: %1</translation>
    </message>
    <message id="IDS_CMD_MOVIE">
        <extracomment>What MOVIE stands for. file: is not translated.</extracomment>
        <source>A movie to be added to the list: a file or a file: address</source>
        <translation>Film die aan de lijst wordt toegevoegd: bestand of file:-adres</translation>
    </message>
    <message id="IDS_CMD_HELP">
        <extracomment>What --help does.</extracomment>
        <source>Shows this help</source>
        <translation>Toont deze hulp</translation>
    </message>
    <message id="IDS_CMD_VERSION">
        <extracomment>What --version does.</extracomment>
        <source>Shows the version</source>
        <translation>Toont de versie</translation>
    </message>
    <message id="IDS_CMD_UNKNOWN_OPTION">
        <extracomment>%1 is what was typed, like --hlep.</extracomment>
        <source>Unknown option: %1</source>
        <translation>Onbekende optie: %1</translation>
    </message>
    <message id="IDS_CMD_SEE_HELP">
        <extracomment>%1 is what is to be typed.</extracomment>
        <source>“%1” shows what is possible.</source>
        <translation>‘%1’ toont wat er mogelijk is.</translation>
    </message>
    <message id="IDS_CMD_NO_DISPLAY">
        <extracomment>X11 and Wayland are names.</extracomment>
        <source>No window can be opened: neither an X11 nor a Wayland display can be reached.</source>
        <translation>Er kan geen venster worden geopend: er is geen X11- of Wayland-scherm bereikbaar.</translation>
    </message>
    <message id="IDS_TXT_SDCARD_DELAY">
        <extracomment>First line; IDS_TXT_CONTINUE follows. Buttons: Cancel, OK.</extracomment>
        <source>This movie is on a memory card or another removable disk. Converting it from there can take longer.</source>
        <translation>Deze film staat op een geheugenkaart of een andere verwijderbare schijf. Omzetten vanaf daar kan langer duren.</translation>
    </message>
    <message id="IDS_TXT_CONTINUE">
        <extracomment>Second line, after IDS_TXT_SDCARD_DELAY.</extracomment>
        <source>Do you want to add it all the same?</source>
        <translation>Wilt u de film toch toevoegen?</translation>
    </message>
    <message id="IDS_TXT_ENCODER_MISSING">
        <source>Movies cannot be read or converted now, because the program ffmpeg is missing or may not be run.
Please install the package “ffmpeg” with your system’s software manager, then start Quorvex Reelshift again.</source>
        <translation>Er kunnen nu geen films worden gelezen of omgezet, omdat het programma ffmpeg ontbreekt of niet mag worden uitgevoerd.
Installeer het pakket ‘ffmpeg’ met het programmabeheer van uw systeem en start Quorvex Reelshift daarna opnieuw.</translation>
    </message>
    <!-- Message boxes: converting -->
    <message id="IDS_TXT_POPUP_SAMENAME">
        <extracomment>The movie's path follows on a line of its own. Buttons: Cancel, Keep Both, Skip, Replace.</extracomment>
        <source>The output folder already has a movie with this name. Cancel stops the whole conversion.</source>
        <translation>De uitvoermap bevat al een film met deze naam. ‘Annuleren’ stopt het omzetten van alle films.</translation>
    </message>
    <message id="IDS_TXT_POPUP_ERROR">
        <extracomment>First line; IDS_TXT_POPUP_WANTTOSKIP and the movie's name follow. Buttons: Stop, Skip.</extracomment>
        <source>This movie could not be converted.</source>
        <translation>Deze film kon niet worden omgezet.</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOSKIP">
        <extracomment>Second line, between IDS_TXT_POPUP_ERROR and the movie's name.</extracomment>
        <source>Do you want to skip it and continue, or stop the conversion?</source>
        <translation>Wilt u de film overslaan en doorgaan, of stoppen met omzetten?</translation>
    </message>
    <message id="IDS_TXT_POPUP_SOURCE_UNAVAILABLE">
        <extracomment>Buttons: Skip, Try Again.</extracomment>
        <source>The original movie cannot be found. It may have been moved or deleted, or its disk is not connected.
Skip this movie, or put it back and try again.</source>
        <translation>De oorspronkelijke film is niet gevonden. Misschien is deze verplaatst of verwijderd, of is de schijf niet aangesloten.
Sla deze film over, of zet hem terug en probeer het opnieuw.</translation>
    </message>
    <message id="IDS_TXT_POPUP_UNEXPECTEDREMOVE">
        <extracomment>Buttons: OK, Try Again.</extracomment>
        <source>The original movie disappeared while it was being converted. Was its disk disconnected?
OK ends the conversion. To continue, put the movie back and choose Try Again.</source>
        <translation>De oorspronkelijke film is tijdens het omzetten verdwenen. Is de schijf losgekoppeld?
‘OK’ beëindigt het omzetten. Zet de film terug en kies ‘Opnieuw proberen’ om door te gaan.</translation>
    </message>
    <message id="IDS_TXT_POPUP_MEMORYFULL">
        <extracomment>First line; IDS_TXT_DATA_NOTCONVERTED follows.</extracomment>
        <source>The output folder is full, or nothing can be written there any more.</source>
        <translation>De uitvoermap is vol, of er kan niets meer worden opgeslagen.</translation>
    </message>
    <message id="IDS_TXT_DATA_NOTCONVERTED">
        <extracomment>Second line, after IDS_TXT_POPUP_MEMORYFULL.</extracomment>
        <source>The movie was not converted. Please make room or choose another folder, then press Convert again.</source>
        <translation>De film is niet omgezet. Maak ruimte vrij of kies een andere map, en klik daarna opnieuw op ‘Omzetten’.</translation>
    </message>
    <message id="IDS_TXT_POPUP_INTERRUPTED">
        <extracomment>First line; a path follows, then IDS_TXT_POPUP_WANTTOTRASH.</extracomment>
        <source>The last conversion was interrupted. It has left an unfinished movie that cannot be played:</source>
        <translation>Het vorige omzetten werd onderbroken. Er is een onvolledige film achtergebleven die niet kan worden afgespeeld:</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOTRASH">
        <extracomment>Last line, after the path of IDS_TXT_POPUP_INTERRUPTED. Buttons: Cancel, Move to Trash.</extracomment>
        <source>Do you want to move it to the trash? The original movie was not touched.</source>
        <translation>Wilt u die naar de prullenbak verplaatsen? Aan de oorspronkelijke film is niets veranderd.</translation>
    </message>
    <message id="IDS_TXT_POPUP_NOTTRASHED">
        <extracomment>First line; a path follows.</extracomment>
        <source>This file could not be moved to the trash. It stays where it is:</source>
        <translation>Dit bestand kon niet naar de prullenbak worden verplaatst. Het blijft waar het is:</translation>
    </message>
    <message id="IDS_TXT_POPUP_SESSIONENDS">
        <extracomment>A question during a run. Buttons: Cancel, End Session.</extracomment>
        <source>Movies are being converted. If the session ends now, those that are not finished have to be converted again. Do you want to end the session?</source>
        <translation>Er worden films omgezet. Als de sessie nu eindigt, moeten de films die nog niet klaar zijn opnieuw worden omgezet. Wilt u de sessie beëindigen?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING">
        <extracomment>First line; IDS_TXT_POPUP_STOPCONVERTING2 follows. Buttons: Cancel, OK.</extracomment>
        <source>Do you want to stop the conversion?</source>
        <translation>Wilt u stoppen met omzetten?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING2">
        <extracomment>Second line, after IDS_TXT_POPUP_STOPCONVERTING.</extracomment>
        <source>Movies that are already converted are kept. An unfinished one has to be converted again from its beginning.</source>
        <translation>Films die al zijn omgezet, blijven behouden. Een onvoltooide film moet opnieuw vanaf het begin worden omgezet.</translation>
    </message>
    <message id="IDS_TXT_POPUP_PUASEDJOBS">
        <extracomment>First line; IDS_TXT_POPUP_CLICKTOCONTINUE follows. Buttons: Cancel, Convert.</extracomment>
        <source>Some movies are still paused.</source>
        <translation>Er zijn nog films gepauzeerd.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CLICKTOCONTINUE">
        <extracomment>Second line, after IDS_TXT_POPUP_PUASEDJOBS.</extracomment>
        <source>Press Convert to resume them.</source>
        <translation>Klik op ‘Omzetten’ om ermee door te gaan.</translation>
    </message>
    <message id="IDS_TXT_POPUP_OPERATION_SUCCESSFUL">
        <extracomment>Shown after every run, also one that ended early. Buttons: OK, Open Folder.</extracomment>
        <source>The conversion has ended.
Converted movies are in the output folder. Movies that were not converted stay in the list.</source>
        <translation>Het omzetten is beëindigd.
Omgezette films staan in de uitvoermap. Films die niet zijn omgezet, blijven in de lijst.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CONVERSIONCOMPLETE">
        <source>Conversion complete</source>
        <translation>Omzetten voltooid</translation>
    </message>
    <!-- Update window -->
    <message id="IDS_TXT_NEWVERSION">
        <extracomment>Buttons: OK, Cancel.</extracomment>
        <source>A new version of Quorvex Reelshift is available.
Do you want to download it now? When the installer opens, Quorvex Reelshift closes.</source>
        <translation>Er is een nieuwe versie van Quorvex Reelshift beschikbaar.
Wilt u deze nu downloaden? Quorvex Reelshift wordt afgesloten zodra het installatieprogramma opent.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TITLE">
        <extracomment>Title of the window.</extracomment>
        <source>Quorvex Reelshift Update</source>
        <translation>Update van Quorvex Reelshift</translation>
    </message>
    <message id="IDS_TXT_DOWNLOADING">
        <extracomment>Above the progress bar.</extracomment>
        <source>Downloading the new version…</source>
        <translation>De nieuwe versie wordt gedownload…</translation>
    </message>
    <message id="IDS_A11Y_DOWNLOAD_PROGRESS">
        <source>Download progress</source>
        <translation>Voortgang van de download</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TIMEOUT">
        <source>The update server does not answer.</source>
        <translation>De updateserver reageert niet.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_UNUSABLE">
        <source>The answer of the update server cannot be used.</source>
        <translation>Het antwoord van de updateserver is onbruikbaar.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_HOST">
        <source>The update server cannot be found.</source>
        <translation>De updateserver kan niet worden gevonden.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_SECURE">
        <source>The update server cannot prove that it is the right one.</source>
        <translation>De updateserver kan zijn identiteit niet bewijzen.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_CUT">
        <source>The update server closed the connection too soon.</source>
        <translation>De updateserver heeft de verbinding te vroeg verbroken.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_REFUSED">
        <extracomment>What the server said follows on the same line.</extracomment>
        <source>The update server answers:</source>
        <translation>Antwoord van de updateserver:</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_DOWNLOADS">
        <source>The Downloads folder cannot be created.</source>
        <translation>De map voor downloads kan niet worden aangemaakt.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_OPENED">
        <extracomment>First line; the path of the downloaded file follows.</extracomment>
        <source>The installer could not be opened. It is here:</source>
        <translation>Het installatieprogramma kon niet worden geopend. Het staat hier:</translation>
    </message>
    <!-- Panels -->
    <message id="IDS_TXT_PANEL_ADD">
        <source>Add Movies</source>
        <translation>Films toevoegen</translation>
    </message>
    <message id="IDS_TXT_PANEL_FILTER">
        <extracomment>The patterns in parentheses stay as they are.</extracomment>
        <source>MP4 movies (*.mp4 *.MP4)</source>
        <translation>MP4-films (*.mp4 *.MP4)</translation>
    </message>
    <message id="IDS_TXT_PANEL_FOLDER">
        <source>Select Output Folder</source>
        <translation>Uitvoermap kiezen</translation>
    </message>
    <!-- Tooltips -->
    <message id="IDS_TIP_ADD_FILE">
        <source>Choose HEVC movies to add to the list</source>
        <translation>HEVC-films kiezen om aan de lijst toe te voegen</translation>
    </message>
    <message id="IDS_TIP_REMOVE_FILE">
        <source>Take all checked movies off the list. The files themselves stay where they are</source>
        <translation>Alle aangevinkte films uit de lijst halen. De bestanden zelf blijven staan waar ze staan</translation>
    </message>
    <message id="IDS_TIP_CONVERT">
        <source>Convert every waiting movie in the list, checked or not</source>
        <translation>Alle wachtende films in de lijst omzetten, aangevinkt of niet</translation>
    </message>
    <message id="IDS_TIP_STOP">
        <source>Stop the whole conversion</source>
        <translation>Stoppen met het omzetten van alle films</translation>
    </message>
    <message id="IDS_TIP_SELECT_FOLDER">
        <source>Choose where the converted movies are saved</source>
        <translation>Kiezen waar de omgezette films worden opgeslagen</translation>
    </message>
    <message id="IDS_TIP_OPEN_FOLDER">
        <source>Show the output folder in the file manager</source>
        <translation>De uitvoermap in bestandsbeheer tonen</translation>
    </message>
    <message id="IDS_TIP_OUTPUT_FOLDER">
        <source>Converted movies are saved here</source>
        <translation>Omgezette films worden hier opgeslagen</translation>
    </message>
    <message id="IDS_TIP_OPEN_AFTER_FINISH">
        <source>The box at the end of a conversion offers to open the output folder. Opening it there clears this check mark</source>
        <translation>Na afloop van het omzetten kunt u de uitvoermap laten openen. Als u dat daar doet, verdwijnt dit vinkje</translation>
    </message>
    <message id="IDS_TIP_PROFILE">
        <source>Sets the quality of all checked movies, or of the selected movie when none is checked.
Pro keeps the most detail in the largest files. Normal makes the smallest ones</source>
        <translation>Stelt de kwaliteit van alle aangevinkte films in, of van de geselecteerde film als er geen is aangevinkt.
‘Pro’ behoudt de meeste details in de grootste bestanden. ‘Normaal’ maakt de kleinste</translation>
    </message>
    <message id="IDS_TIP_SELECT_ALL">
        <source>Check or uncheck all movies</source>
        <translation>Alle films aanvinken of uitvinken</translation>
    </message>
    <message id="IDS_TIP_TABLE">
        <source>Drop movies here to add them. Drag rows to change the order of conversion</source>
        <translation>Sleep films hierheen om ze toe te voegen. Versleep rijen om de volgorde van omzetten te wijzigen</translation>
    </message>
    <message id="IDS_TIP_CELL_CHECK">
        <source>Checked movies take the quality chosen above the list and can be removed together</source>
        <translation>Aangevinkte films krijgen de kwaliteit die boven de lijst is gekozen en kunnen samen worden verwijderd</translation>
    </message>
    <message id="IDS_TIP_CELL_PROFILE">
        <source>Click to choose this movie’s quality</source>
        <translation>Klik om de kwaliteit van deze film te kiezen</translation>
    </message>
    <message id="IDS_TIP_CELL_LOCKED">
        <source>Can be chosen again after the conversion</source>
        <translation>Kan na het omzetten weer worden gekozen</translation>
    </message>
    <message id="IDS_TIP_CELL_RESOLUTION">
        <source>Click to choose this movie’s picture size</source>
        <translation>Klik om de beeldgrootte van deze film te kiezen</translation>
    </message>
    <message id="IDS_TIP_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1 from the list</source>
        <translation>%1 uit de lijst verwijderen</translation>
    </message>
    <message id="IDS_TIP_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause the conversion of %1</source>
        <translation>Het omzetten van %1 pauzeren</translation>
    </message>
    <message id="IDS_TIP_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume the conversion of %1</source>
        <translation>Het omzetten van %1 hervatten</translation>
    </message>
    <!-- Names that screen readers speak, for what carries no text of its own -->
    <message id="IDS_A11Y_TABLE">
        <source>Movies to convert</source>
        <translation>Om te zetten films</translation>
    </message>
    <message id="IDS_A11Y_OUTPUT_FOLDER">
        <source>Output folder</source>
        <translation>Uitvoermap</translation>
    </message>
    <message id="IDS_A11Y_OPEN_AFTER_FINISH">
        <source>Open the folder when finished</source>
        <translation>Map openen na afloop</translation>
    </message>
    <message id="IDS_A11Y_PROFILE">
        <source>Quality of checked movies</source>
        <translation>Kwaliteit van aangevinkte films</translation>
    </message>
    <message id="IDS_A11Y_SELECT_ALL">
        <source>Check all movies</source>
        <translation>Alle films aanvinken</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_CHECK">
        <source>Checked</source>
        <translation>Aangevinkt</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_BUTTON">
        <source>Action</source>
        <translation>Actie</translation>
    </message>
    <message id="IDS_A11Y_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1</source>
        <translation>%1 verwijderen</translation>
    </message>
    <message id="IDS_A11Y_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause %1</source>
        <translation>%1 pauzeren</translation>
    </message>
    <message id="IDS_A11Y_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume %1</source>
        <translation>%1 hervatten</translation>
    </message>
    <message id="IDS_TXT_CHECKED">
        <source>checked</source>
        <translation>aangevinkt</translation>
    </message>
    <message id="IDS_TXT_UNCHECKED">
        <source>not checked</source>
        <translation>niet aangevinkt</translation>
    </message>
    <message id="IDS_TXT_ENCODER_UNSUITABLE">
        <extracomment>Shown once, like IDS_TXT_ENCODER_MISSING. libx264 is a name.</extracomment>
        <source>Movies cannot be converted now, because the installed ffmpeg has no H.264 encoder (libx264).</source>
        <translation>Er kunnen nu geen films worden omgezet, omdat de geïnstalleerde ffmpeg geen H.264-encoder (libx264) heeft.</translation>
    </message>
    <message id="IDS_TXT_NOT_KEPT_AWAKE">
        <extracomment>A quiet line in the window during a conversion.</extracomment>
        <source>The computer may go to sleep during the conversion.</source>
        <translation>De computer kan tijdens het omzetten in de slaapstand gaan.</translation>
    </message>
    <message id="IDS_TXT_KEEP_AWAKE_REASON">
        <extracomment>Told to the desktop, which may show it: why it must not go to sleep.</extracomment>
        <source>Movies are being converted</source>
        <translation>Er worden films omgezet</translation>
    </message>
    <message id="IDS_TXT_RUN_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Converted: %1</source>
        <translation>Omgezet: %1</translation>
    </message>
    <message id="IDS_TXT_RUN_NOT_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Not converted: %1</source>
        <translation>Niet omgezet: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_MOVIE">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for this movie: %1</source>
        <translation>Resterende tijd voor deze film: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_RUN">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for all movies: %1</source>
        <translation>Resterende tijd voor alle films: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_HOURS">
        <extracomment>%1 hours and %2 minutes, abbreviated.</extracomment>
        <source>%1 h %2 min</source>
        <translation>%1 u %2 min</translation>
    </message>
    <message id="IDS_TXT_LEFT_MINUTES">
        <extracomment>%1 minutes, abbreviated.</extracomment>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message id="IDS_TXT_LEFT_SECONDS">
        <extracomment>%1 seconds, abbreviated.</extracomment>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message id="IDS_TIP_WITH_SHORTCUT">
        <extracomment>A tooltip %1 followed by the shortcut %2, for example Ctrl+O.</extracomment>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message id="IDS_MENU_HELP">
        <extracomment>In the context menu, and the title of the window that it opens.</extracomment>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message id="IDS_MENU_ABOUT">
        <extracomment>In the context menu, and the title of the window that it opens. Quorvex Reelshift is the program's name.</extracomment>
        <source>About Quorvex Reelshift</source>
        <translation>Over Quorvex Reelshift</translation>
    </message>
    <message id="IDS_MENU_COPY_DETAILS">
        <extracomment>In the context menu of a movie that was not converted: copies what is known of the failure, for a report.</extracomment>
        <source>Copy Details</source>
        <translation>Details kopiëren</translation>
    </message>
    <message id="IDS_TXT_DETAILS_COPIED">
        <extracomment>A quiet line in the window, after IDS_MENU_COPY_DETAILS.</extracomment>
        <source>The details are in the clipboard.</source>
        <translation>De details staan op het klembord.</translation>
    </message>
    <message id="IDS_HELP_KEYS">
        <extracomment>A heading over a list of keys and what they do.</extracomment>
        <source>Keys</source>
        <translation>Toetsen</translation>
    </message>
    <message id="IDS_ABOUT_ENCODER">
        <extracomment>%1 is a version, %2 a path.</extracomment>
        <source>ffmpeg: version %1, at %2</source>
        <translation>ffmpeg: versie %1, in %2</translation>
    </message>
    <message id="IDS_ABOUT_NO_ENCODER">
        <source>ffmpeg: not found</source>
        <translation>ffmpeg: niet gevonden</translation>
    </message>
    <message id="IDS_ABOUT_USES">
        <extracomment>A list of libraries with their licences follows.</extracomment>
        <source>Used by this program, with their licences:</source>
        <translation>Gebruikt door dit programma, met hun licenties:</translation>
    </message>
    <message id="IDS_BTN_CLOSE">
        <extracomment>The button of the windows of IDS_MENU_HELP and IDS_MENU_ABOUT.</extracomment>
        <source>Close</source>
        <translation>Sluiten</translation>
    </message>
    <message id="IDS_A11Y_ROW_STATUS">
        <extracomment>Said by a screen reader: movie %1 now has the status %2.</extracomment>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="IDS_A11Y_ROW_PROGRESS">
        <extracomment>Status of a movie while it is converted, for screen readers.</extracomment>
        <source>Converting</source>
        <translation>Wordt omgezet</translation>
    </message>
</context>
</TS>
