<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl" sourcelanguage="en">
<context>
    <name></name>
    <!-- Main window: buttons and captions -->
    <message id="IDS_BTN_ADD_FILE">
        <source>&amp;Add Movies…</source>
        <translation>&amp;Dodaj filmy…</translation>
    </message>
    <message id="IDS_BTN_REMOVE_FILE">
        <extracomment>Removes every checked movie from the list.</extracomment>
        <source>&amp;Remove Checked</source>
        <translation>&amp;Usuń zaznaczone</translation>
    </message>
    <message id="IDS_BTN_CONVERT">
        <extracomment>Also a button of the box about paused movies.</extracomment>
        <source>&amp;Convert</source>
        <translation>&amp;Konwertuj</translation>
    </message>
    <message id="IDS_BTN_STOP">
        <extracomment>Also a button of the box about a movie that could not be converted.</extracomment>
        <source>&amp;Stop</source>
        <translation>&amp;Zatrzymaj</translation>
    </message>
    <message id="IDS_BTN_SELECT_FOLDER">
        <source>Select &amp;Folder…</source>
        <translation>&amp;Wybierz folder…</translation>
    </message>
    <message id="IDS_BTN_OPEN_FOLDER">
        <extracomment>Also a button of the box at the end of a conversion.</extracomment>
        <source>&amp;Open Folder</source>
        <translation>&amp;Otwórz folder</translation>
    </message>
    <message id="IDS_TXTFLD_OUTPUTFOLDER">
        <source>O&amp;utput folder</source>
        <translation>Folder do&amp;celowy</translation>
    </message>
    <message id="IDS_TXTFLD_OPNFLDRAFTRFNSH">
        <source>Open the folder &amp;when finished</source>
        <translation>Otwórz folder po zakończe&amp;niu</translation>
    </message>
    <message id="IDS_TXT_PROFILE_CAPTION">
        <extracomment>Caption of the quality list beside the output folder.</extracomment>
        <source>&amp;Quality of checked movies</source>
        <translation>&amp;Jakość zaznaczonych filmów</translation>
    </message>
    <message id="IDS_TXT_FILELIST">
        <extracomment>Two blanks and the number of movies in parentheses follow: Movies  (3).</extracomment>
        <source>&amp;Movies</source>
        <translation>&amp;Filmy</translation>
    </message>
    <message id="IDS_TXT_EMPTY_LIST">
        <extracomment>Shown in the empty list.</extracomment>
        <source>Drop HEVC movies here, or press Add Movies…</source>
        <translation>Upuść tutaj filmy HEVC lub naciśnij „Dodaj filmy…”</translation>
    </message>
    <message id="IDS_TXT_APP_DESCRIPTION">
        <source>Turns HEVC movies into H.264 MP4 files</source>
        <translation>Konwertuje filmy HEVC na pliki MP4 H.264</translation>
    </message>
    <!-- Movie list: column titles -->
    <message id="IDS_TXT_FILENAME">
        <source>File name</source>
        <translation>Nazwa pliku</translation>
    </message>
    <message id="IDS_TXT_DURATION">
        <source>Duration</source>
        <translation>Czas trwania</translation>
    </message>
    <message id="IDS_TXT_AUDIO">
        <source>Audio</source>
        <translation>Dźwięk</translation>
    </message>
    <message id="IDS_TXTFLD_RESOLUTION">
        <extracomment>The picture size of the new movie.</extracomment>
        <source>Resolution</source>
        <translation>Rozdzielczość</translation>
    </message>
    <message id="IDS_TXTFLD_QUALITY">
        <source>Quality</source>
        <translation>Jakość</translation>
    </message>
    <message id="IDS_TXT_STATUS">
        <extracomment>Also the whole text of the box shown when a download turns out to be empty.</extracomment>
        <source>Status</source>
        <translation>Stan</translation>
    </message>
    <!-- Movie list: what the status column says -->
    <message id="IDS_TXT_STATUS_WAITING">
        <source>Waiting</source>
        <translation>Oczekuje</translation>
    </message>
    <message id="IDS_TXT_STATUS_PAUSED">
        <source>Paused</source>
        <translation>Wstrzymany</translation>
    </message>
    <message id="IDS_TXT_STATUS_CONVERTED">
        <source>Converted</source>
        <translation>Gotowy</translation>
    </message>
    <!-- Qualities: three of each, separated by ';', best first and in the same order everywhere -->
    <message id="IDS_TXT_PROFILELIST">
        <extracomment>The ninth character of each name is a digit.</extracomment>
        <source>H.264 LV0 : Pro, for Editing (largest files);H.264 LV1 : Best Quality;H.264 LV2 : Normal Quality (smaller files)</source>
        <translation>H.264 LV0 : Pro, do montażu;H.264 LV1 : Najlepsza jakość;H.264 LV2 : Zwykła jakość</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_DROPDOWN">
        <extracomment>The three texts of IDS_TXT_PROFILELIST_1 to _3, joined by ';'.</extracomment>
        <source>Pro, for editing;Best quality;Normal quality</source>
        <translation>Pro, do montażu;Najlepsza jakość;Zwykła jakość</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_1">
        <source>Pro, for editing</source>
        <translation>Pro, do montażu</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_2">
        <source>Best quality</source>
        <translation>Najlepsza jakość</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_3">
        <source>Normal quality</source>
        <translation>Zwykła jakość</translation>
    </message>
    <!-- Message boxes: buttons -->
    <message id="IDS_BTN_POPUP_OK">
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message id="IDS_BTN_POPUP_CANCEL">
        <source>Ca&amp;ncel</source>
        <translation>&amp;Anuluj</translation>
    </message>
    <message id="IDS_BTN_POPUP_SKIP">
        <source>Sk&amp;ip</source>
        <translation>&amp;Pomiń</translation>
    </message>
    <message id="IDS_BTN_POPUP_REPLACE">
        <source>&amp;Replace</source>
        <translation>Zas&amp;tąp</translation>
    </message>
    <message id="IDS_BTN_POPUP_DUPLICATE">
        <extracomment>The new movie gets a number in its name.</extracomment>
        <source>Keep &amp;Both</source>
        <translation>Zachowaj o&amp;ba</translation>
    </message>
    <message id="IDS_BTN_POPUP_TRASH">
        <source>Move to &amp;Trash</source>
        <translation>Przenieś do &amp;kosza</translation>
    </message>
    <message id="IDS_BTN_POPUP_ENDSESSION">
        <source>&amp;End Session</source>
        <translation>&amp;Zakończ sesję</translation>
    </message>
    <message id="IDS_TXT_POPUP_TRYAGAIN">
        <extracomment>A button.</extracomment>
        <source>&amp;Try Again</source>
        <translation>Spróbuj ponow&amp;nie</translation>
    </message>
    <message id="IDS_TXT_POPUP_DOFORERROR">
        <extracomment>A check box below the buttons' question.</extracomment>
        <source>&amp;Do the same for the other movies</source>
        <translation>Zrób to &amp;samo z pozostałymi filmami</translation>
    </message>
    <!-- Message boxes: output folder -->
    <message id="IDS_TXT_SDCARD_CANNOT_BEUSED">
        <extracomment>First line; IDS_TXT_USE_ANOTHER_FOLDER follows.</extracomment>
        <source>The output folder cannot be on a memory card, a USB stick or another removable disk.</source>
        <translation>Folder docelowy nie może znajdować się na karcie pamięci, pendrivie ani innym dysku wymiennym.</translation>
    </message>
    <message id="IDS_TXT_USE_ANOTHER_FOLDER">
        <extracomment>Second line, after IDS_TXT_SDCARD_CANNOT_BEUSED.</extracomment>
        <source>Please choose another folder, for example one in your home folder.</source>
        <translation>Proszę wybrać inny folder, na przykład w katalogu domowym.</translation>
    </message>
    <message id="IDS_TXT_FAT32_UNSUPPORTED">
        <source>This folder is on a disk with the FAT file system, which cannot hold a movie larger than 4 GB.
Please choose a folder on another disk.</source>
        <translation>Ten folder znajduje się na dysku z systemem plików FAT, na którym nie zmieści się film większy niż 4 GB.
Proszę wybrać folder na innym dysku.</translation>
    </message>
    <message id="IDS_BTN_POPUP_OUTFLDRUNAVAILABLE">
        <extracomment>A message, in spite of its name.</extracomment>
        <source>The output folder cannot be found. It may have been moved or deleted, or its disk is not connected.
Please press Select Folder… and choose a folder.</source>
        <translation>Nie można odnaleźć folderu docelowego. Być może został przeniesiony lub usunięty albo jego dysk nie jest podłączony.
Proszę nacisnąć „Wybierz folder…” i wybrać folder.</translation>
    </message>
    <!-- Message boxes: adding movies -->
    <message id="IDS_TXT_UNSUPPORTED">
        <extracomment>Shown once, for one file or for several.</extracomment>
        <source>Only movies with HEVC (H.265) video can be added.
Files of another kind, and damaged ones, were left out.</source>
        <translation>Można dodawać tylko filmy z obrazem HEVC (H.265).
Pliki innego rodzaju i pliki uszkodzone zostały pominięte.</translation>
    </message>
    <message id="IDS_TXT_ADD_ENDED">
        <extracomment>%1 is the name of the file that ended the adding of several.</extracomment>
        <source>“%1” cannot be added.</source>
        <translation>Nie można dodać „%1”.</translation>
    </message>
    <message id="IDS_TXT_ADD_NOT_LOOKED_AT">
        <extracomment>Follows IDS_TXT_ADD_ENDED on the same line. %1 is a number.</extracomment>
        <source>Movies after it that were not looked at: %1</source>
        <translation>Następne filmy, których nie sprawdzono: %1</translation>
    </message>
    <message id="IDS_TXT_ADDING">
        <extracomment>While movies are added: %1 is the number of the one at hand, %2 of all.</extracomment>
        <source>Adding movie %1 of %2. Escape ends it after this one.</source>
        <translation>Dodawanie filmu %1 z %2. Escape kończy po tym filmie.</translation>
    </message>
    <message id="IDS_TXT_ADD_STOPPED">
        <extracomment>The user has pressed Escape while movies were added. %1 is a number.</extracomment>
        <source>Adding was ended. Movies that were left out: %1</source>
        <translation>Zakończono dodawanie. Pominięte filmy: %1</translation>
    </message>
    <message id="IDS_TXT_LOOKING_FOR_MOVIES">
        <extracomment>While folders that were dropped are searched.</extracomment>
        <source>Looking for movies in folders. Escape ends it.</source>
        <translation>Szukanie filmów w folderach. Escape kończy.</translation>
    </message>
    <message id="IDS_TXT_NO_MOVIES_IN_FOLDER">
        <extracomment>A folder was dropped that holds no movie.</extracomment>
        <source>There is no movie in the folder.</source>
        <translation>W folderze nie ma filmu.</translation>
    </message>
    <message id="IDS_TXT_TOO_MANY_MOVIES">
        <extracomment>Folders were dropped that hold more movies. %1 is a number.</extracomment>
        <source>Only the first %1 movies were taken.</source>
        <translation>Wzięto tylko pierwszych %1 filmów.</translation>
    </message>
    <message id="IDS_TXT_OPENED_LATER">
        <extracomment>A quiet line in the window during a conversion. %1 is a number.</extracomment>
        <source>Movies that will be added after the conversion: %1</source>
        <translation>Filmy, które zostaną dodane po konwersji: %1</translation>
    </message>
    <message id="IDS_CMD_USAGE">
        <extracomment>On a terminal, like all IDS_CMD_ texts. %1 is the program's name and what can follow it.</extracomment>
        <source>Usage: %1</source>
        <translation>Użycie: %1</translation>
    </message>
    <message id="IDS_CMD_MOVIE">
        <extracomment>What MOVIE stands for. file: is not translated.</extracomment>
        <source>A movie to be added to the list: a file or a file: address</source>
        <translation>Film, który ma być dodany do listy: plik lub adres file:</translation>
    </message>
    <message id="IDS_CMD_HELP">
        <extracomment>What --help does.</extracomment>
        <source>Shows this help</source>
        <translation>Wyświetla tę pomoc</translation>
    </message>
    <message id="IDS_CMD_VERSION">
        <extracomment>What --version does.</extracomment>
        <source>Shows the version</source>
        <translation>Wyświetla wersję</translation>
    </message>
    <message id="IDS_CMD_UNKNOWN_OPTION">
        <extracomment>%1 is what was typed, like --hlep.</extracomment>
        <source>Unknown option: %1</source>
        <translation>Nieznana opcja: %1</translation>
    </message>
    <message id="IDS_CMD_SEE_HELP">
        <extracomment>%1 is what is to be typed.</extracomment>
        <source>“%1” shows what is possible.</source>
        <translation>„%1” pokazuje, co jest możliwe.</translation>
    </message>
    <message id="IDS_CMD_NO_DISPLAY">
        <extracomment>X11 and Wayland are names.</extracomment>
        <source>No window can be opened: neither an X11 nor a Wayland display can be reached.</source>
        <translation>Nie można otworzyć okna: nie ma dostępu do ekranu X11 ani Wayland.</translation>
    </message>
    <message id="IDS_TXT_SDCARD_DELAY">
        <extracomment>First line; IDS_TXT_CONTINUE follows. Buttons: Cancel, OK.</extracomment>
        <source>This movie is on a memory card or another removable disk. Converting it from there can take longer.</source>
        <translation>Ten film znajduje się na karcie pamięci lub innym dysku wymiennym. Konwertowanie go stamtąd może trwać dłużej.</translation>
    </message>
    <message id="IDS_TXT_CONTINUE">
        <extracomment>Second line, after IDS_TXT_SDCARD_DELAY.</extracomment>
        <source>Do you want to add it all the same?</source>
        <translation>Czy mimo to go dodać?</translation>
    </message>
    <message id="IDS_TXT_ENCODER_MISSING">
        <source>Movies cannot be read or converted now, because the program ffmpeg is missing or may not be run.
Please install the package “ffmpeg” with your system’s software manager, then start Quorvex Reelshift again.</source>
        <translation>Nie można teraz odczytywać ani konwertować filmów, ponieważ brakuje programu ffmpeg lub nie można go uruchomić.
Proszę zainstalować pakiet „ffmpeg” za pomocą menedżera oprogramowania, a następnie ponownie uruchomić program Quorvex Reelshift.</translation>
    </message>
    <!-- Message boxes: converting -->
    <message id="IDS_TXT_POPUP_SAMENAME">
        <extracomment>The movie's path follows on a line of its own. Buttons: Cancel, Keep Both, Skip, Replace.</extracomment>
        <source>The output folder already has a movie with this name. Cancel stops the whole conversion.</source>
        <translation>W folderze docelowym jest już film o tej nazwie. „Anuluj” zatrzymuje całą konwersję.</translation>
    </message>
    <message id="IDS_TXT_POPUP_ERROR">
        <extracomment>First line; IDS_TXT_POPUP_WANTTOSKIP and the movie's name follow. Buttons: Stop, Skip.</extracomment>
        <source>This movie could not be converted.</source>
        <translation>Nie udało się przekonwertować tego filmu.</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOSKIP">
        <extracomment>Second line, between IDS_TXT_POPUP_ERROR and the movie's name.</extracomment>
        <source>Do you want to skip it and continue, or stop the conversion?</source>
        <translation>Pominąć go i kontynuować, czy zatrzymać konwersję?</translation>
    </message>
    <message id="IDS_TXT_POPUP_SOURCE_UNAVAILABLE">
        <extracomment>Buttons: Skip, Try Again.</extracomment>
        <source>The original movie cannot be found. It may have been moved or deleted, or its disk is not connected.
Skip this movie, or put it back and try again.</source>
        <translation>Nie można odnaleźć oryginalnego filmu. Być może został przeniesiony lub usunięty albo jego dysk nie jest podłączony.
Można pominąć ten film albo przywrócić go na miejsce i spróbować ponownie.</translation>
    </message>
    <message id="IDS_TXT_POPUP_UNEXPECTEDREMOVE">
        <extracomment>Buttons: OK, Try Again.</extracomment>
        <source>The original movie disappeared while it was being converted. Was its disk disconnected?
OK ends the conversion. To continue, put the movie back and choose Try Again.</source>
        <translation>Oryginalny film zniknął podczas konwersji. Czy jego dysk został odłączony?
„OK” kończy konwersję. Aby kontynuować, proszę przywrócić film na miejsce i wybrać „Spróbuj ponownie”.</translation>
    </message>
    <message id="IDS_TXT_POPUP_MEMORYFULL">
        <extracomment>First line; IDS_TXT_DATA_NOTCONVERTED follows.</extracomment>
        <source>The output folder is full, or nothing can be written there any more.</source>
        <translation>Folder docelowy jest pełny lub nie można już w nim zapisywać.</translation>
    </message>
    <message id="IDS_TXT_DATA_NOTCONVERTED">
        <extracomment>Second line, after IDS_TXT_POPUP_MEMORYFULL.</extracomment>
        <source>The movie was not converted. Please make room or choose another folder, then press Convert again.</source>
        <translation>Film nie został przekonwertowany. Proszę zwolnić miejsce lub wybrać inny folder, a następnie ponownie nacisnąć „Konwertuj”.</translation>
    </message>
    <message id="IDS_TXT_POPUP_INTERRUPTED">
        <extracomment>First line; a path follows, then IDS_TXT_POPUP_WANTTOTRASH.</extracomment>
        <source>The last conversion was interrupted. It has left an unfinished movie that cannot be played:</source>
        <translation>Ostatnia konwersja została przerwana. Pozostał po niej niedokończony film, którego nie można odtworzyć:</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOTRASH">
        <extracomment>Last line, after the path of IDS_TXT_POPUP_INTERRUPTED. Buttons: Cancel, Move to Trash.</extracomment>
        <source>Do you want to move it to the trash? The original movie was not touched.</source>
        <translation>Czy przenieść go do kosza? Oryginalny film nie został zmieniony.</translation>
    </message>
    <message id="IDS_TXT_POPUP_NOTTRASHED">
        <extracomment>First line; a path follows.</extracomment>
        <source>This file could not be moved to the trash. It stays where it is:</source>
        <translation>Nie udało się przenieść tego pliku do kosza. Pozostaje tam, gdzie jest:</translation>
    </message>
    <message id="IDS_TXT_POPUP_SESSIONENDS">
        <extracomment>A question during a run. Buttons: Cancel, End Session.</extracomment>
        <source>Movies are being converted. If the session ends now, those that are not finished have to be converted again. Do you want to end the session?</source>
        <translation>Trwa konwersja filmów. Jeśli sesja zakończy się teraz, nieukończone filmy trzeba będzie przekonwertować ponownie. Czy zakończyć sesję?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING">
        <extracomment>First line; IDS_TXT_POPUP_STOPCONVERTING2 follows. Buttons: Cancel, OK.</extracomment>
        <source>Do you want to stop the conversion?</source>
        <translation>Czy zatrzymać konwersję?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING2">
        <extracomment>Second line, after IDS_TXT_POPUP_STOPCONVERTING.</extracomment>
        <source>Movies that are already converted are kept. An unfinished one has to be converted again from its beginning.</source>
        <translation>Filmy już przekonwertowane zostaną zachowane. Nieukończony film trzeba będzie konwertować ponownie od początku.</translation>
    </message>
    <message id="IDS_TXT_POPUP_PUASEDJOBS">
        <extracomment>First line; IDS_TXT_POPUP_CLICKTOCONTINUE follows. Buttons: Cancel, Convert.</extracomment>
        <source>Some movies are still paused.</source>
        <translation>Niektóre filmy są nadal wstrzymane.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CLICKTOCONTINUE">
        <extracomment>Second line, after IDS_TXT_POPUP_PUASEDJOBS.</extracomment>
        <source>Press Convert to resume them.</source>
        <translation>Aby je wznowić, proszę nacisnąć „Konwertuj”.</translation>
    </message>
    <message id="IDS_TXT_POPUP_OPERATION_SUCCESSFUL">
        <extracomment>Shown after every run, also one that ended early. Buttons: OK, Open Folder.</extracomment>
        <source>The conversion has ended.
Converted movies are in the output folder. Movies that were not converted stay in the list.</source>
        <translation>Konwersja została zakończona.
Przekonwertowane filmy są w folderze docelowym. Filmy nieprzekonwertowane pozostają na liście.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CONVERSIONCOMPLETE">
        <source>Conversion complete</source>
        <translation>Konwersja zakończona</translation>
    </message>
    <!-- Update window -->
    <message id="IDS_TXT_NEWVERSION">
        <extracomment>Buttons: OK, Cancel.</extracomment>
        <source>A new version of Quorvex Reelshift is available.
Do you want to download it now? When the installer opens, Quorvex Reelshift closes.</source>
        <translation>Dostępna jest nowa wersja programu Quorvex Reelshift.
Czy pobrać ją teraz? Po otwarciu instalatora program Quorvex Reelshift zostanie zamknięty.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TITLE">
        <extracomment>Title of the window.</extracomment>
        <source>Quorvex Reelshift Update</source>
        <translation>Aktualizacja programu Quorvex Reelshift</translation>
    </message>
    <message id="IDS_TXT_DOWNLOADING">
        <extracomment>Above the progress bar.</extracomment>
        <source>Downloading the new version…</source>
        <translation>Pobieranie nowej wersji…</translation>
    </message>
    <message id="IDS_A11Y_DOWNLOAD_PROGRESS">
        <source>Download progress</source>
        <translation>Postęp pobierania</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TIMEOUT">
        <source>The update server does not answer.</source>
        <translation>Serwer aktualizacji nie odpowiada.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_UNUSABLE">
        <source>The answer of the update server cannot be used.</source>
        <translation>Nie można użyć odpowiedzi serwera aktualizacji.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_HOST">
        <source>The update server cannot be found.</source>
        <translation>Nie można znaleźć serwera aktualizacji.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_SECURE">
        <source>The update server cannot prove that it is the right one.</source>
        <translation>Serwer aktualizacji nie może potwierdzić swojej tożsamości.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_CUT">
        <source>The update server closed the connection too soon.</source>
        <translation>Serwer aktualizacji zbyt wcześnie zamknął połączenie.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_REFUSED">
        <extracomment>What the server said follows on the same line.</extracomment>
        <source>The update server answers:</source>
        <translation>Odpowiedź serwera aktualizacji:</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_DOWNLOADS">
        <source>The Downloads folder cannot be created.</source>
        <translation>Nie można utworzyć folderu na pobrane pliki.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_OPENED">
        <extracomment>First line; the path of the downloaded file follows.</extracomment>
        <source>The installer could not be opened. It is here:</source>
        <translation>Nie udało się otworzyć instalatora. Znajduje się tutaj:</translation>
    </message>
    <!-- Panels -->
    <message id="IDS_TXT_PANEL_ADD">
        <source>Add Movies</source>
        <translation>Dodawanie filmów</translation>
    </message>
    <message id="IDS_TXT_PANEL_FILTER">
        <extracomment>The patterns in parentheses stay as they are.</extracomment>
        <source>MP4 movies (*.mp4 *.MP4)</source>
        <translation>Filmy MP4 (*.mp4 *.MP4)</translation>
    </message>
    <message id="IDS_TXT_PANEL_FOLDER">
        <source>Select Output Folder</source>
        <translation>Wybór folderu docelowego</translation>
    </message>
    <!-- Tooltips -->
    <message id="IDS_TIP_ADD_FILE">
        <source>Choose HEVC movies to add to the list</source>
        <translation>Wybierz filmy HEVC, aby dodać je do listy</translation>
    </message>
    <message id="IDS_TIP_REMOVE_FILE">
        <source>Take all checked movies off the list. The files themselves stay where they are</source>
        <translation>Usuń z listy wszystkie zaznaczone filmy. Same pliki pozostaną na swoim miejscu</translation>
    </message>
    <message id="IDS_TIP_CONVERT">
        <source>Convert every waiting movie in the list, checked or not</source>
        <translation>Konwertuj wszystkie oczekujące filmy z listy, zaznaczone i niezaznaczone</translation>
    </message>
    <message id="IDS_TIP_STOP">
        <source>Stop the whole conversion</source>
        <translation>Zatrzymaj całą konwersję</translation>
    </message>
    <message id="IDS_TIP_SELECT_FOLDER">
        <source>Choose where the converted movies are saved</source>
        <translation>Wybierz, gdzie zapisywać przekonwertowane filmy</translation>
    </message>
    <message id="IDS_TIP_OPEN_FOLDER">
        <source>Show the output folder in the file manager</source>
        <translation>Pokaż folder docelowy w menedżerze plików</translation>
    </message>
    <message id="IDS_TIP_OUTPUT_FOLDER">
        <source>Converted movies are saved here</source>
        <translation>Tutaj zapisywane są przekonwertowane filmy</translation>
    </message>
    <message id="IDS_TIP_OPEN_AFTER_FINISH">
        <source>The box at the end of a conversion offers to open the output folder. Opening it there clears this check mark</source>
        <translation>Okno wyświetlane po zakończeniu konwersji proponuje otwarcie folderu docelowego. Otwarcie go w ten sposób usuwa to zaznaczenie</translation>
    </message>
    <message id="IDS_TIP_PROFILE">
        <source>Sets the quality of all checked movies, or of the selected movie when none is checked.
Pro keeps the most detail in the largest files. Normal makes the smallest ones</source>
        <translation>Ustawia jakość wszystkich zaznaczonych filmów lub wybranego filmu, jeśli żaden nie jest zaznaczony.
„Pro” zachowuje najwięcej szczegółów w największych plikach. „Zwykła” tworzy najmniejsze</translation>
    </message>
    <message id="IDS_TIP_SELECT_ALL">
        <source>Check or uncheck all movies</source>
        <translation>Zaznacz lub odznacz wszystkie filmy</translation>
    </message>
    <message id="IDS_TIP_TABLE">
        <source>Drop movies here to add them. Drag rows to change the order of conversion</source>
        <translation>Upuść tutaj filmy, aby je dodać. Przeciągaj wiersze, aby zmienić kolejność konwersji</translation>
    </message>
    <message id="IDS_TIP_CELL_CHECK">
        <source>Checked movies take the quality chosen above the list and can be removed together</source>
        <translation>Zaznaczone filmy otrzymują jakość wybraną nad listą i można je razem usunąć</translation>
    </message>
    <message id="IDS_TIP_CELL_PROFILE">
        <source>Click to choose this movie’s quality</source>
        <translation>Kliknij, aby wybrać jakość tego filmu</translation>
    </message>
    <message id="IDS_TIP_CELL_LOCKED">
        <source>Can be chosen again after the conversion</source>
        <translation>Można będzie wybrać ponownie po konwersji</translation>
    </message>
    <message id="IDS_TIP_CELL_RESOLUTION">
        <source>Click to choose this movie’s picture size</source>
        <translation>Kliknij, aby wybrać rozmiar obrazu tego filmu</translation>
    </message>
    <message id="IDS_TIP_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1 from the list</source>
        <translation>Usuń %1 z listy</translation>
    </message>
    <message id="IDS_TIP_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause the conversion of %1</source>
        <translation>Wstrzymaj konwersję %1</translation>
    </message>
    <message id="IDS_TIP_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume the conversion of %1</source>
        <translation>Wznów konwersję %1</translation>
    </message>
    <!-- Names that screen readers speak, for what carries no text of its own -->
    <message id="IDS_A11Y_TABLE">
        <source>Movies to convert</source>
        <translation>Filmy do konwersji</translation>
    </message>
    <message id="IDS_A11Y_OUTPUT_FOLDER">
        <source>Output folder</source>
        <translation>Folder docelowy</translation>
    </message>
    <message id="IDS_A11Y_OPEN_AFTER_FINISH">
        <source>Open the folder when finished</source>
        <translation>Otwórz folder po zakończeniu</translation>
    </message>
    <message id="IDS_A11Y_PROFILE">
        <source>Quality of checked movies</source>
        <translation>Jakość zaznaczonych filmów</translation>
    </message>
    <message id="IDS_A11Y_SELECT_ALL">
        <source>Check all movies</source>
        <translation>Zaznacz wszystkie filmy</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_CHECK">
        <source>Checked</source>
        <translation>Zaznaczony</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_BUTTON">
        <source>Action</source>
        <translation>Działanie</translation>
    </message>
    <message id="IDS_A11Y_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1</source>
        <translation>Usuń %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause %1</source>
        <translation>Wstrzymaj %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume %1</source>
        <translation>Wznów %1</translation>
    </message>
    <message id="IDS_TXT_CHECKED">
        <source>checked</source>
        <translation>zaznaczony</translation>
    </message>
    <message id="IDS_TXT_UNCHECKED">
        <source>not checked</source>
        <translation>niezaznaczony</translation>
    </message>
    <message id="IDS_TXT_ENCODER_UNSUITABLE">
        <extracomment>Shown once, like IDS_TXT_ENCODER_MISSING. libx264 is a name.</extracomment>
        <source>Movies cannot be converted now, because the installed ffmpeg has no H.264 encoder (libx264).</source>
        <translation>Nie można teraz konwertować filmów, ponieważ zainstalowany program ffmpeg nie ma kodera H.264 (libx264).</translation>
    </message>
    <message id="IDS_TXT_NOT_KEPT_AWAKE">
        <extracomment>A quiet line in the window during a conversion.</extracomment>
        <source>The computer may go to sleep during the conversion.</source>
        <translation>Komputer może zostać uśpiony podczas konwersji.</translation>
    </message>
    <message id="IDS_TXT_KEEP_AWAKE_REASON">
        <extracomment>Told to the desktop, which may show it: why it must not go to sleep.</extracomment>
        <source>Movies are being converted</source>
        <translation>Trwa konwersja filmów</translation>
    </message>
    <message id="IDS_TXT_RUN_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Converted: %1</source>
        <translation>Przekonwertowane: %1</translation>
    </message>
    <message id="IDS_TXT_RUN_NOT_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Not converted: %1</source>
        <translation>Nieprzekonwertowane: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_MOVIE">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for this movie: %1</source>
        <translation>Pozostały czas dla tego filmu: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_RUN">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for all movies: %1</source>
        <translation>Pozostały czas dla wszystkich filmów: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_HOURS">
        <extracomment>%1 hours and %2 minutes, abbreviated.</extracomment>
        <source>%1 h %2 min</source>
        <translation>%1 godz. %2 min</translation>
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
        <translation>Pomoc</translation>
    </message>
    <message id="IDS_MENU_ABOUT">
        <extracomment>In the context menu, and the title of the window that it opens. Quorvex Reelshift is the program's name.</extracomment>
        <source>About Quorvex Reelshift</source>
        <translation>O programie Quorvex Reelshift</translation>
    </message>
    <message id="IDS_MENU_COPY_DETAILS">
        <extracomment>In the context menu of a movie that was not converted: copies what is known of the failure, for a report.</extracomment>
        <source>Copy Details</source>
        <translation>Kopiuj szczegóły</translation>
    </message>
    <message id="IDS_TXT_DETAILS_COPIED">
        <extracomment>A quiet line in the window, after IDS_MENU_COPY_DETAILS.</extracomment>
        <source>The details are in the clipboard.</source>
        <translation>Szczegóły są w schowku.</translation>
    </message>
    <message id="IDS_HELP_KEYS">
        <extracomment>A heading over a list of keys and what they do.</extracomment>
        <source>Keys</source>
        <translation>Klawisze</translation>
    </message>
    <message id="IDS_ABOUT_ENCODER">
        <extracomment>%1 is a version, %2 a path.</extracomment>
        <source>ffmpeg: version %1, at %2</source>
        <translation>ffmpeg: wersja %1, w %2</translation>
    </message>
    <message id="IDS_ABOUT_NO_ENCODER">
        <source>ffmpeg: not found</source>
        <translation>ffmpeg: nie znaleziono</translation>
    </message>
    <message id="IDS_ABOUT_USES">
        <extracomment>A list of libraries with their licences follows.</extracomment>
        <source>Used by this program, with their licences:</source>
        <translation>Używane przez ten program, wraz z licencjami:</translation>
    </message>
    <message id="IDS_BTN_CLOSE">
        <extracomment>The button of the windows of IDS_MENU_HELP and IDS_MENU_ABOUT.</extracomment>
        <source>Close</source>
        <translation>Zamknij</translation>
    </message>
    <message id="IDS_A11Y_ROW_STATUS">
        <extracomment>Said by a screen reader: movie %1 now has the status %2.</extracomment>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="IDS_A11Y_ROW_PROGRESS">
        <extracomment>Status of a movie while it is converted, for screen readers.</extracomment>
        <source>Converting</source>
        <translation>Konwertowanie</translation>
    </message>
</context>
</TS>
