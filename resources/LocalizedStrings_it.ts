<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name></name>
    <!-- Main window: buttons and captions -->
    <message id="IDS_BTN_ADD_FILE">
        <source>&amp;Add Movies…</source>
        <translation>&amp;Aggiungi filmati…</translation>
    </message>
    <message id="IDS_BTN_REMOVE_FILE">
        <extracomment>Removes every checked movie from the list.</extracomment>
        <source>&amp;Remove Checked</source>
        <translation>&amp;Rimuovi spuntati</translation>
    </message>
    <message id="IDS_BTN_CONVERT">
        <extracomment>Also a button of the box about paused movies.</extracomment>
        <source>&amp;Convert</source>
        <translation>&amp;Converti</translation>
    </message>
    <message id="IDS_BTN_STOP">
        <extracomment>Also a button of the box about a movie that could not be converted.</extracomment>
        <source>&amp;Stop</source>
        <translation>&amp;Ferma</translation>
    </message>
    <message id="IDS_BTN_SELECT_FOLDER">
        <source>Select &amp;Folder…</source>
        <translation>&amp;Scegli cartella…</translation>
    </message>
    <message id="IDS_BTN_OPEN_FOLDER">
        <extracomment>Also a button of the box at the end of a conversion.</extracomment>
        <source>&amp;Open Folder</source>
        <translation>Apri cart&amp;ella</translation>
    </message>
    <message id="IDS_TXTFLD_OUTPUTFOLDER">
        <source>O&amp;utput folder</source>
        <translation>Cartella di &amp;uscita</translation>
    </message>
    <message id="IDS_TXTFLD_OPNFLDRAFTRFNSH">
        <source>Open the folder &amp;when finished</source>
        <translation>Apri la cartella al &amp;termine</translation>
    </message>
    <message id="IDS_TXT_PROFILE_CAPTION">
        <extracomment>Caption of the quality list beside the output folder.</extracomment>
        <source>&amp;Quality of checked movies</source>
        <translation>&amp;Qualità dei filmati spuntati</translation>
    </message>
    <message id="IDS_TXT_FILELIST">
        <extracomment>Two blanks and the number of movies in parentheses follow: Movies  (3).</extracomment>
        <source>&amp;Movies</source>
        <translation>Fil&amp;mati</translation>
    </message>
    <message id="IDS_TXT_EMPTY_LIST">
        <extracomment>Shown in the empty list.</extracomment>
        <source>Drop HEVC movies here, or press Add Movies…</source>
        <translation>Trascina qui i filmati HEVC o premi «Aggiungi filmati…»</translation>
    </message>
    <message id="IDS_TXT_APP_DESCRIPTION">
        <source>Turns HEVC movies into H.264 MP4 files</source>
        <translation>Converte filmati HEVC in file MP4 H.264</translation>
    </message>
    <!-- Movie list: column titles -->
    <message id="IDS_TXT_FILENAME">
        <source>File name</source>
        <translation>Nome del file</translation>
    </message>
    <message id="IDS_TXT_DURATION">
        <source>Duration</source>
        <translation>Durata</translation>
    </message>
    <message id="IDS_TXT_AUDIO">
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message id="IDS_TXTFLD_RESOLUTION">
        <extracomment>The picture size of the new movie.</extracomment>
        <source>Resolution</source>
        <translation>Risoluzione</translation>
    </message>
    <message id="IDS_TXTFLD_QUALITY">
        <source>Quality</source>
        <translation>Qualità</translation>
    </message>
    <message id="IDS_TXT_STATUS">
        <extracomment>Also the whole text of the box shown when a download turns out to be empty.</extracomment>
        <source>Status</source>
        <translation>Stato</translation>
    </message>
    <!-- Movie list: what the status column says -->
    <message id="IDS_TXT_STATUS_WAITING">
        <source>Waiting</source>
        <translation>In attesa</translation>
    </message>
    <message id="IDS_TXT_STATUS_PAUSED">
        <source>Paused</source>
        <translation>In pausa</translation>
    </message>
    <message id="IDS_TXT_STATUS_CONVERTED">
        <source>Converted</source>
        <translation>Convertito</translation>
    </message>
    <!-- Qualities: three of each, separated by ';', best first and in the same order everywhere -->
    <message id="IDS_TXT_PROFILELIST">
        <extracomment>The ninth character of each name is a digit.</extracomment>
        <source>H.264 LV0 : Pro, for Editing (largest files);H.264 LV1 : Best Quality;H.264 LV2 : Normal Quality (smaller files)</source>
        <translation>H.264 LV0 : Pro, per il montaggio;H.264 LV1 : Qualità ottima;H.264 LV2 : Qualità normale</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_DROPDOWN">
        <extracomment>The three texts of IDS_TXT_PROFILELIST_1 to _3, joined by ';'.</extracomment>
        <source>Pro, for editing;Best quality;Normal quality</source>
        <translation>Pro, per il montaggio;Qualità ottima;Qualità normale</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_1">
        <source>Pro, for editing</source>
        <translation>Pro, per il montaggio</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_2">
        <source>Best quality</source>
        <translation>Qualità ottima</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_3">
        <source>Normal quality</source>
        <translation>Qualità normale</translation>
    </message>
    <!-- Message boxes: buttons -->
    <message id="IDS_BTN_POPUP_OK">
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message id="IDS_BTN_POPUP_CANCEL">
        <source>Ca&amp;ncel</source>
        <translation>A&amp;nnulla</translation>
    </message>
    <message id="IDS_BTN_POPUP_SKIP">
        <source>Sk&amp;ip</source>
        <translation>Sa&amp;lta</translation>
    </message>
    <message id="IDS_BTN_POPUP_REPLACE">
        <source>&amp;Replace</source>
        <translation>&amp;Sostituisci</translation>
    </message>
    <message id="IDS_BTN_POPUP_DUPLICATE">
        <extracomment>The new movie gets a number in its name.</extracomment>
        <source>Keep &amp;Both</source>
        <translation>&amp;Mantieni entrambi</translation>
    </message>
    <message id="IDS_BTN_POPUP_TRASH">
        <source>Move to &amp;Trash</source>
        <translation>Sposta nel &amp;cestino</translation>
    </message>
    <message id="IDS_BTN_POPUP_ENDSESSION">
        <source>&amp;End Session</source>
        <translation>&amp;Termina sessione</translation>
    </message>
    <message id="IDS_TXT_POPUP_TRYAGAIN">
        <extracomment>A button.</extracomment>
        <source>&amp;Try Again</source>
        <translation>&amp;Riprova</translation>
    </message>
    <message id="IDS_TXT_POPUP_DOFORERROR">
        <extracomment>A check box below the buttons' question.</extracomment>
        <source>&amp;Do the same for the other movies</source>
        <translation>Fai l&amp;o stesso per gli altri filmati</translation>
    </message>
    <!-- Message boxes: output folder -->
    <message id="IDS_TXT_SDCARD_CANNOT_BEUSED">
        <extracomment>First line; IDS_TXT_USE_ANOTHER_FOLDER follows.</extracomment>
        <source>The output folder cannot be on a memory card, a USB stick or another removable disk.</source>
        <translation>La cartella di uscita non può trovarsi su una scheda di memoria, una chiavetta o un altro disco rimovibile.</translation>
    </message>
    <message id="IDS_TXT_USE_ANOTHER_FOLDER">
        <extracomment>Second line, after IDS_TXT_SDCARD_CANNOT_BEUSED.</extracomment>
        <source>Please choose another folder, for example one in your home folder.</source>
        <translation>Scegli un’altra cartella, ad esempio una nella tua cartella personale.</translation>
    </message>
    <message id="IDS_TXT_FAT32_UNSUPPORTED">
        <source>This folder is on a disk with the FAT file system, which cannot hold a movie larger than 4 GB.
Please choose a folder on another disk.</source>
        <translation>Questa cartella si trova su un disco con file system FAT, che non può contenere un filmato più grande di 4 GB.
Scegli una cartella su un altro disco.</translation>
    </message>
    <message id="IDS_BTN_POPUP_OUTFLDRUNAVAILABLE">
        <extracomment>A message, in spite of its name.</extracomment>
        <source>The output folder cannot be found. It may have been moved or deleted, or its disk is not connected.
Please press Select Folder… and choose a folder.</source>
        <translation>Impossibile trovare la cartella di uscita. Forse è stata spostata o eliminata, oppure il suo disco non è collegato.
Premi «Scegli cartella…» e scegli una cartella.</translation>
    </message>
    <!-- Message boxes: adding movies -->
    <message id="IDS_TXT_UNSUPPORTED">
        <extracomment>Shown once, for one file or for several.</extracomment>
        <source>Only movies with HEVC (H.265) video can be added.
Files of another kind, and damaged ones, were left out.</source>
        <translation>È possibile aggiungere solo filmati con video HEVC (H.265).
I file di altro tipo e quelli danneggiati sono stati esclusi.</translation>
    </message>
    <message id="IDS_TXT_ADD_ENDED">
        <extracomment>%1 is the name of the file that ended the adding of several.</extracomment>
        <source>“%1” cannot be added.</source>
        <translation>«%1» non può essere aggiunto.</translation>
    </message>
    <message id="IDS_TXT_ADD_NOT_LOOKED_AT">
        <extracomment>Follows IDS_TXT_ADD_ENDED on the same line. %1 is a number.</extracomment>
        <source>Movies after it that were not looked at: %1</source>
        <translation>Filmati successivi non esaminati: %1</translation>
    </message>
    <message id="IDS_TXT_ADDING">
        <extracomment>While movies are added: %1 is the number of the one at hand, %2 of all.</extracomment>
        <source>Adding movie %1 of %2. Escape ends it after this one.</source>
        <translation>Aggiunta del filmato %1 di %2. Esc termina dopo questo.</translation>
    </message>
    <message id="IDS_TXT_ADD_STOPPED">
        <extracomment>The user has pressed Escape while movies were added. %1 is a number.</extracomment>
        <source>Adding was ended. Movies that were left out: %1</source>
        <translation>L’aggiunta è stata terminata. Filmati tralasciati: %1</translation>
    </message>
    <message id="IDS_TXT_LOOKING_FOR_MOVIES">
        <extracomment>While folders that were dropped are searched.</extracomment>
        <source>Looking for movies in folders. Escape ends it.</source>
        <translation>Ricerca di filmati nelle cartelle. Esc la termina.</translation>
    </message>
    <message id="IDS_TXT_NO_MOVIES_IN_FOLDER">
        <extracomment>A folder was dropped that holds no movie.</extracomment>
        <source>There is no movie in the folder.</source>
        <translation>Non ci sono filmati nella cartella.</translation>
    </message>
    <message id="IDS_TXT_TOO_MANY_MOVIES">
        <extracomment>Folders were dropped that hold more movies. %1 is a number.</extracomment>
        <source>Only the first %1 movies were taken.</source>
        <translation>Sono stati presi solo i primi %1 filmati.</translation>
    </message>
    <message id="IDS_TXT_OPENED_LATER">
        <extracomment>A quiet line in the window during a conversion. %1 is a number.</extracomment>
        <source>Movies that will be added after the conversion: %1</source>
        <translation>Filmati che saranno aggiunti dopo la conversione: %1</translation>
    </message>
    <message id="IDS_CMD_USAGE">
        <extracomment>On a terminal, like all IDS_CMD_ texts. %1 is the program's name and what can follow it.</extracomment>
        <source>Usage: %1</source>
        <translation>Uso: %1</translation>
    </message>
    <message id="IDS_CMD_MOVIE">
        <extracomment>What MOVIE stands for. file: is not translated.</extracomment>
        <source>A movie to be added to the list: a file or a file: address</source>
        <translation>Filmato da aggiungere all’elenco: un file o un indirizzo file:</translation>
    </message>
    <message id="IDS_CMD_HELP">
        <extracomment>What --help does.</extracomment>
        <source>Shows this help</source>
        <translation>Mostra questo aiuto</translation>
    </message>
    <message id="IDS_CMD_VERSION">
        <extracomment>What --version does.</extracomment>
        <source>Shows the version</source>
        <translation>Mostra la versione</translation>
    </message>
    <message id="IDS_CMD_UNKNOWN_OPTION">
        <extracomment>%1 is what was typed, like --hlep.</extracomment>
        <source>Unknown option: %1</source>
        <translation>Opzione sconosciuta: %1</translation>
    </message>
    <message id="IDS_CMD_SEE_HELP">
        <extracomment>%1 is what is to be typed.</extracomment>
        <source>“%1” shows what is possible.</source>
        <translation>“%1” mostra che cosa è possibile.</translation>
    </message>
    <message id="IDS_CMD_NO_DISPLAY">
        <extracomment>X11 and Wayland are names.</extracomment>
        <source>No window can be opened: neither an X11 nor a Wayland display can be reached.</source>
        <translation>Impossibile aprire una finestra: nessuno schermo X11 o Wayland è raggiungibile.</translation>
    </message>
    <message id="IDS_TXT_SDCARD_DELAY">
        <extracomment>First line; IDS_TXT_CONTINUE follows. Buttons: Cancel, OK.</extracomment>
        <source>This movie is on a memory card or another removable disk. Converting it from there can take longer.</source>
        <translation>Questo filmato si trova su una scheda di memoria o un altro disco rimovibile. Convertirlo da lì può richiedere più tempo.</translation>
    </message>
    <message id="IDS_TXT_CONTINUE">
        <extracomment>Second line, after IDS_TXT_SDCARD_DELAY.</extracomment>
        <source>Do you want to add it all the same?</source>
        <translation>Vuoi aggiungerlo comunque?</translation>
    </message>
    <message id="IDS_TXT_ENCODER_MISSING">
        <source>Movies cannot be read or converted now, because the program ffmpeg is missing or may not be run.
Please install the package “ffmpeg” with your system’s software manager, then start Quorvex Reelshift again.</source>
        <translation>Al momento non è possibile leggere né convertire filmati, perché il programma ffmpeg manca o non può essere eseguito.
Installa il pacchetto «ffmpeg» con il gestore del software del sistema, poi riavvia Quorvex Reelshift.</translation>
    </message>
    <!-- Message boxes: converting -->
    <message id="IDS_TXT_POPUP_SAMENAME">
        <extracomment>The movie's path follows on a line of its own. Buttons: Cancel, Keep Both, Skip, Replace.</extracomment>
        <source>The output folder already has a movie with this name. Cancel stops the whole conversion.</source>
        <translation>Nella cartella di uscita c’è già un filmato con questo nome. «Annulla» ferma l’intera conversione.</translation>
    </message>
    <message id="IDS_TXT_POPUP_ERROR">
        <extracomment>First line; IDS_TXT_POPUP_WANTTOSKIP and the movie's name follow. Buttons: Stop, Skip.</extracomment>
        <source>This movie could not be converted.</source>
        <translation>Impossibile convertire questo filmato.</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOSKIP">
        <extracomment>Second line, between IDS_TXT_POPUP_ERROR and the movie's name.</extracomment>
        <source>Do you want to skip it and continue, or stop the conversion?</source>
        <translation>Vuoi saltarlo e continuare, oppure fermare la conversione?</translation>
    </message>
    <message id="IDS_TXT_POPUP_SOURCE_UNAVAILABLE">
        <extracomment>Buttons: Skip, Try Again.</extracomment>
        <source>The original movie cannot be found. It may have been moved or deleted, or its disk is not connected.
Skip this movie, or put it back and try again.</source>
        <translation>Impossibile trovare il filmato originale. Forse è stato spostato o eliminato, oppure il suo disco non è collegato.
Salta questo filmato, oppure rimettilo al suo posto e riprova.</translation>
    </message>
    <message id="IDS_TXT_POPUP_UNEXPECTEDREMOVE">
        <extracomment>Buttons: OK, Try Again.</extracomment>
        <source>The original movie disappeared while it was being converted. Was its disk disconnected?
OK ends the conversion. To continue, put the movie back and choose Try Again.</source>
        <translation>Il filmato originale è scomparso durante la conversione. Il suo disco è stato scollegato?
«OK» termina la conversione. Per continuare, rimetti il filmato al suo posto e scegli «Riprova».</translation>
    </message>
    <message id="IDS_TXT_POPUP_MEMORYFULL">
        <extracomment>First line; IDS_TXT_DATA_NOTCONVERTED follows.</extracomment>
        <source>The output folder is full, or nothing can be written there any more.</source>
        <translation>La cartella di uscita è piena o non è più possibile scrivervi.</translation>
    </message>
    <message id="IDS_TXT_DATA_NOTCONVERTED">
        <extracomment>Second line, after IDS_TXT_POPUP_MEMORYFULL.</extracomment>
        <source>The movie was not converted. Please make room or choose another folder, then press Convert again.</source>
        <translation>Il filmato non è stato convertito. Libera spazio o scegli un’altra cartella, poi premi di nuovo «Converti».</translation>
    </message>
    <message id="IDS_TXT_POPUP_INTERRUPTED">
        <extracomment>First line; a path follows, then IDS_TXT_POPUP_WANTTOTRASH.</extracomment>
        <source>The last conversion was interrupted. It has left an unfinished movie that cannot be played:</source>
        <translation>L’ultima conversione è stata interrotta. Ha lasciato un filmato incompleto che non può essere riprodotto:</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOTRASH">
        <extracomment>Last line, after the path of IDS_TXT_POPUP_INTERRUPTED. Buttons: Cancel, Move to Trash.</extracomment>
        <source>Do you want to move it to the trash? The original movie was not touched.</source>
        <translation>Vuoi spostarlo nel cestino? Il filmato originale non è stato toccato.</translation>
    </message>
    <message id="IDS_TXT_POPUP_NOTTRASHED">
        <extracomment>First line; a path follows.</extracomment>
        <source>This file could not be moved to the trash. It stays where it is:</source>
        <translation>Impossibile spostare questo file nel cestino. Resta dov’è:</translation>
    </message>
    <message id="IDS_TXT_POPUP_SESSIONENDS">
        <extracomment>A question during a run. Buttons: Cancel, End Session.</extracomment>
        <source>Movies are being converted. If the session ends now, those that are not finished have to be converted again. Do you want to end the session?</source>
        <translation>È in corso la conversione di filmati. Se la sessione termina ora, quelli non ancora completati dovranno essere convertiti di nuovo. Vuoi terminare la sessione?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING">
        <extracomment>First line; IDS_TXT_POPUP_STOPCONVERTING2 follows. Buttons: Cancel, OK.</extracomment>
        <source>Do you want to stop the conversion?</source>
        <translation>Vuoi fermare la conversione?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING2">
        <extracomment>Second line, after IDS_TXT_POPUP_STOPCONVERTING.</extracomment>
        <source>Movies that are already converted are kept. An unfinished one has to be converted again from its beginning.</source>
        <translation>I filmati già convertiti vengono conservati. Un filmato non completato dovrà essere riconvertito dall’inizio.</translation>
    </message>
    <message id="IDS_TXT_POPUP_PUASEDJOBS">
        <extracomment>First line; IDS_TXT_POPUP_CLICKTOCONTINUE follows. Buttons: Cancel, Convert.</extracomment>
        <source>Some movies are still paused.</source>
        <translation>Alcuni filmati sono ancora in pausa.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CLICKTOCONTINUE">
        <extracomment>Second line, after IDS_TXT_POPUP_PUASEDJOBS.</extracomment>
        <source>Press Convert to resume them.</source>
        <translation>Premi «Converti» per riprenderli.</translation>
    </message>
    <message id="IDS_TXT_POPUP_OPERATION_SUCCESSFUL">
        <extracomment>Shown after every run, also one that ended early. Buttons: OK, Open Folder.</extracomment>
        <source>The conversion has ended.
Converted movies are in the output folder. Movies that were not converted stay in the list.</source>
        <translation>La conversione è terminata.
I filmati convertiti sono nella cartella di uscita. Quelli non convertiti restano nell’elenco.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CONVERSIONCOMPLETE">
        <source>Conversion complete</source>
        <translation>Conversione completata</translation>
    </message>
    <!-- Update window -->
    <message id="IDS_TXT_NEWVERSION">
        <extracomment>Buttons: OK, Cancel.</extracomment>
        <source>A new version of Quorvex Reelshift is available.
Do you want to download it now? When the installer opens, Quorvex Reelshift closes.</source>
        <translation>È disponibile una nuova versione di Quorvex Reelshift.
Vuoi scaricarla ora? All’apertura del programma di installazione, Quorvex Reelshift verrà chiuso.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TITLE">
        <extracomment>Title of the window.</extracomment>
        <source>Quorvex Reelshift Update</source>
        <translation>Aggiornamento di Quorvex Reelshift</translation>
    </message>
    <message id="IDS_TXT_DOWNLOADING">
        <extracomment>Above the progress bar.</extracomment>
        <source>Downloading the new version…</source>
        <translation>Scaricamento della nuova versione…</translation>
    </message>
    <message id="IDS_A11Y_DOWNLOAD_PROGRESS">
        <source>Download progress</source>
        <translation>Avanzamento dello scaricamento</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TIMEOUT">
        <source>The update server does not answer.</source>
        <translation>Il server degli aggiornamenti non risponde.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_UNUSABLE">
        <source>The answer of the update server cannot be used.</source>
        <translation>La risposta del server degli aggiornamenti non è utilizzabile.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_HOST">
        <source>The update server cannot be found.</source>
        <translation>Impossibile trovare il server degli aggiornamenti.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_SECURE">
        <source>The update server cannot prove that it is the right one.</source>
        <translation>Il server degli aggiornamenti non può dimostrare la propria identità.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_CUT">
        <source>The update server closed the connection too soon.</source>
        <translation>Il server degli aggiornamenti ha chiuso la connessione troppo presto.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_REFUSED">
        <extracomment>What the server said follows on the same line.</extracomment>
        <source>The update server answers:</source>
        <translation>Risposta del server degli aggiornamenti:</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_DOWNLOADS">
        <source>The Downloads folder cannot be created.</source>
        <translation>Impossibile creare la cartella degli scaricamenti.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_OPENED">
        <extracomment>First line; the path of the downloaded file follows.</extracomment>
        <source>The installer could not be opened. It is here:</source>
        <translation>Impossibile aprire il programma di installazione. Si trova qui:</translation>
    </message>
    <!-- Panels -->
    <message id="IDS_TXT_PANEL_ADD">
        <source>Add Movies</source>
        <translation>Aggiungi filmati</translation>
    </message>
    <message id="IDS_TXT_PANEL_FILTER">
        <extracomment>The patterns in parentheses stay as they are.</extracomment>
        <source>MP4 movies (*.mp4 *.MP4)</source>
        <translation>Filmati MP4 (*.mp4 *.MP4)</translation>
    </message>
    <message id="IDS_TXT_PANEL_FOLDER">
        <source>Select Output Folder</source>
        <translation>Scegli la cartella di uscita</translation>
    </message>
    <!-- Tooltips -->
    <message id="IDS_TIP_ADD_FILE">
        <source>Choose HEVC movies to add to the list</source>
        <translation>Scegli i filmati HEVC da aggiungere all’elenco</translation>
    </message>
    <message id="IDS_TIP_REMOVE_FILE">
        <source>Take all checked movies off the list. The files themselves stay where they are</source>
        <translation>Rimuovi dall’elenco tutti i filmati spuntati. I file restano dove sono</translation>
    </message>
    <message id="IDS_TIP_CONVERT">
        <source>Convert every waiting movie in the list, checked or not</source>
        <translation>Converti tutti i filmati in attesa nell’elenco, spuntati o no</translation>
    </message>
    <message id="IDS_TIP_STOP">
        <source>Stop the whole conversion</source>
        <translation>Ferma l’intera conversione</translation>
    </message>
    <message id="IDS_TIP_SELECT_FOLDER">
        <source>Choose where the converted movies are saved</source>
        <translation>Scegli dove salvare i filmati convertiti</translation>
    </message>
    <message id="IDS_TIP_OPEN_FOLDER">
        <source>Show the output folder in the file manager</source>
        <translation>Mostra la cartella di uscita nel gestore dei file</translation>
    </message>
    <message id="IDS_TIP_OUTPUT_FOLDER">
        <source>Converted movies are saved here</source>
        <translation>I filmati convertiti vengono salvati qui</translation>
    </message>
    <message id="IDS_TIP_OPEN_AFTER_FINISH">
        <source>The box at the end of a conversion offers to open the output folder. Opening it there clears this check mark</source>
        <translation>La finestra al termine di una conversione propone di aprire la cartella di uscita. Aprendola da lì, questa spunta viene tolta</translation>
    </message>
    <message id="IDS_TIP_PROFILE">
        <source>Sets the quality of all checked movies, or of the selected movie when none is checked.
Pro keeps the most detail in the largest files. Normal makes the smallest ones</source>
        <translation>Imposta la qualità di tutti i filmati spuntati, o del filmato selezionato se nessuno è spuntato.
«Pro» conserva più dettagli nei file più grandi. «Normale» crea i più piccoli</translation>
    </message>
    <message id="IDS_TIP_SELECT_ALL">
        <source>Check or uncheck all movies</source>
        <translation>Metti o togli la spunta a tutti i filmati</translation>
    </message>
    <message id="IDS_TIP_TABLE">
        <source>Drop movies here to add them. Drag rows to change the order of conversion</source>
        <translation>Trascina qui i filmati per aggiungerli. Trascina le righe per cambiare l’ordine di conversione</translation>
    </message>
    <message id="IDS_TIP_CELL_CHECK">
        <source>Checked movies take the quality chosen above the list and can be removed together</source>
        <translation>I filmati spuntati ricevono la qualità scelta sopra l’elenco e si possono rimuovere insieme</translation>
    </message>
    <message id="IDS_TIP_CELL_PROFILE">
        <source>Click to choose this movie’s quality</source>
        <translation>Fai clic per scegliere la qualità di questo filmato</translation>
    </message>
    <message id="IDS_TIP_CELL_LOCKED">
        <source>Can be chosen again after the conversion</source>
        <translation>Si potrà scegliere di nuovo dopo la conversione</translation>
    </message>
    <message id="IDS_TIP_CELL_RESOLUTION">
        <source>Click to choose this movie’s picture size</source>
        <translation>Fai clic per scegliere le dimensioni dell’immagine di questo filmato</translation>
    </message>
    <message id="IDS_TIP_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1 from the list</source>
        <translation>Rimuovi %1 dall’elenco</translation>
    </message>
    <message id="IDS_TIP_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause the conversion of %1</source>
        <translation>Metti in pausa la conversione di %1</translation>
    </message>
    <message id="IDS_TIP_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume the conversion of %1</source>
        <translation>Riprendi la conversione di %1</translation>
    </message>
    <!-- Names that screen readers speak, for what carries no text of its own -->
    <message id="IDS_A11Y_TABLE">
        <source>Movies to convert</source>
        <translation>Filmati da convertire</translation>
    </message>
    <message id="IDS_A11Y_OUTPUT_FOLDER">
        <source>Output folder</source>
        <translation>Cartella di uscita</translation>
    </message>
    <message id="IDS_A11Y_OPEN_AFTER_FINISH">
        <source>Open the folder when finished</source>
        <translation>Apri la cartella al termine</translation>
    </message>
    <message id="IDS_A11Y_PROFILE">
        <source>Quality of checked movies</source>
        <translation>Qualità dei filmati spuntati</translation>
    </message>
    <message id="IDS_A11Y_SELECT_ALL">
        <source>Check all movies</source>
        <translation>Spunta tutti i filmati</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_CHECK">
        <source>Checked</source>
        <translation>Spuntato</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_BUTTON">
        <source>Action</source>
        <translation>Azione</translation>
    </message>
    <message id="IDS_A11Y_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1</source>
        <translation>Rimuovi %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause %1</source>
        <translation>Metti in pausa %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume %1</source>
        <translation>Riprendi %1</translation>
    </message>
    <message id="IDS_TXT_CHECKED">
        <source>checked</source>
        <translation>spuntato</translation>
    </message>
    <message id="IDS_TXT_UNCHECKED">
        <source>not checked</source>
        <translation>non spuntato</translation>
    </message>
    <message id="IDS_TXT_ENCODER_UNSUITABLE">
        <extracomment>Shown once, like IDS_TXT_ENCODER_MISSING. libx264 is a name.</extracomment>
        <source>Movies cannot be converted now, because the installed ffmpeg has no H.264 encoder (libx264).</source>
        <translation>Al momento non è possibile convertire filmati, perché il programma ffmpeg installato non ha un codificatore H.264 (libx264).</translation>
    </message>
    <message id="IDS_TXT_NOT_KEPT_AWAKE">
        <extracomment>A quiet line in the window during a conversion.</extracomment>
        <source>The computer may go to sleep during the conversion.</source>
        <translation>Il computer potrebbe andare in sospensione durante la conversione.</translation>
    </message>
    <message id="IDS_TXT_KEEP_AWAKE_REASON">
        <extracomment>Told to the desktop, which may show it: why it must not go to sleep.</extracomment>
        <source>Movies are being converted</source>
        <translation>È in corso la conversione di filmati</translation>
    </message>
    <message id="IDS_TXT_RUN_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Converted: %1</source>
        <translation>Convertiti: %1</translation>
    </message>
    <message id="IDS_TXT_RUN_NOT_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Not converted: %1</source>
        <translation>Non convertiti: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_MOVIE">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for this movie: %1</source>
        <translation>Tempo rimanente per questo filmato: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_RUN">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for all movies: %1</source>
        <translation>Tempo rimanente per tutti i filmati: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_HOURS">
        <extracomment>%1 hours and %2 minutes, abbreviated.</extracomment>
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
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
        <translation>Aiuto</translation>
    </message>
    <message id="IDS_MENU_ABOUT">
        <extracomment>In the context menu, and the title of the window that it opens. Quorvex Reelshift is the program's name.</extracomment>
        <source>About Quorvex Reelshift</source>
        <translation>Informazioni su Quorvex Reelshift</translation>
    </message>
    <message id="IDS_MENU_COPY_DETAILS">
        <extracomment>In the context menu of a movie that was not converted: copies what is known of the failure, for a report.</extracomment>
        <source>Copy Details</source>
        <translation>Copia i dettagli</translation>
    </message>
    <message id="IDS_TXT_DETAILS_COPIED">
        <extracomment>A quiet line in the window, after IDS_MENU_COPY_DETAILS.</extracomment>
        <source>The details are in the clipboard.</source>
        <translation>I dettagli sono negli appunti.</translation>
    </message>
    <message id="IDS_HELP_KEYS">
        <extracomment>A heading over a list of keys and what they do.</extracomment>
        <source>Keys</source>
        <translation>Tasti</translation>
    </message>
    <message id="IDS_ABOUT_ENCODER">
        <extracomment>%1 is a version, %2 a path.</extracomment>
        <source>ffmpeg: version %1, at %2</source>
        <translation>ffmpeg: versione %1, in %2</translation>
    </message>
    <message id="IDS_ABOUT_NO_ENCODER">
        <source>ffmpeg: not found</source>
        <translation>ffmpeg: non trovato</translation>
    </message>
    <message id="IDS_ABOUT_USES">
        <extracomment>A list of libraries with their licences follows.</extracomment>
        <source>Used by this program, with their licences:</source>
        <translation>Usati da questo programma, con le loro licenze:</translation>
    </message>
    <message id="IDS_BTN_CLOSE">
        <extracomment>The button of the windows of IDS_MENU_HELP and IDS_MENU_ABOUT.</extracomment>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message id="IDS_A11Y_ROW_STATUS">
        <extracomment>Said by a screen reader: movie %1 now has the status %2.</extracomment>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="IDS_A11Y_ROW_PROGRESS">
        <extracomment>Status of a movie while it is converted, for screen readers.</extracomment>
        <source>Converting</source>
        <translation>Conversione in corso</translation>
    </message>
</context>
</TS>
