<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name></name>
    <!-- Main window: buttons and captions -->
    <message id="IDS_BTN_ADD_FILE">
        <source>&amp;Add Movies…</source>
        <translation>&amp;Añadir películas…</translation>
    </message>
    <message id="IDS_BTN_REMOVE_FILE">
        <extracomment>Removes every checked movie from the list.</extracomment>
        <source>&amp;Remove Checked</source>
        <translation>&amp;Quitar las marcadas</translation>
    </message>
    <message id="IDS_BTN_CONVERT">
        <extracomment>Also a button of the box about paused movies.</extracomment>
        <source>&amp;Convert</source>
        <translation>&amp;Convertir</translation>
    </message>
    <message id="IDS_BTN_STOP">
        <extracomment>Also a button of the box about a movie that could not be converted.</extracomment>
        <source>&amp;Stop</source>
        <translation>&amp;Detener</translation>
    </message>
    <message id="IDS_BTN_SELECT_FOLDER">
        <source>Select &amp;Folder…</source>
        <translation>&amp;Seleccionar carpeta…</translation>
    </message>
    <message id="IDS_BTN_OPEN_FOLDER">
        <extracomment>Also a button of the box at the end of a conversion.</extracomment>
        <source>&amp;Open Folder</source>
        <translation>Abr&amp;ir la carpeta</translation>
    </message>
    <message id="IDS_TXTFLD_OUTPUTFOLDER">
        <source>O&amp;utput folder</source>
        <translation>Carpeta de sa&amp;lida</translation>
    </message>
    <message id="IDS_TXTFLD_OPNFLDRAFTRFNSH">
        <source>Open the folder &amp;when finished</source>
        <translation>Abrir la carpeta al &amp;terminar</translation>
    </message>
    <message id="IDS_TXT_PROFILE_CAPTION">
        <extracomment>Caption of the quality list beside the output folder.</extracomment>
        <source>&amp;Quality of checked movies</source>
        <translation>Calidad de las &amp;marcadas</translation>
    </message>
    <message id="IDS_TXT_FILELIST">
        <extracomment>Two blanks and the number of movies in parentheses follow: Movies  (3).</extracomment>
        <source>&amp;Movies</source>
        <translation>&amp;Películas</translation>
    </message>
    <message id="IDS_TXT_EMPTY_LIST">
        <extracomment>Shown in the empty list.</extracomment>
        <source>Drop HEVC movies here, or press Add Movies…</source>
        <translation>Suelte aquí películas HEVC o pulse «Añadir películas…»</translation>
    </message>
    <message id="IDS_TXT_APP_DESCRIPTION">
        <source>Turns HEVC movies into H.264 MP4 files</source>
        <translation>Convierte películas HEVC en archivos MP4 H.264</translation>
    </message>
    <!-- Movie list: column titles -->
    <message id="IDS_TXT_FILENAME">
        <source>File name</source>
        <translation>Nombre de archivo</translation>
    </message>
    <message id="IDS_TXT_DURATION">
        <source>Duration</source>
        <translation>Duración</translation>
    </message>
    <message id="IDS_TXT_AUDIO">
        <source>Audio</source>
        <translation>Sonido</translation>
    </message>
    <message id="IDS_TXTFLD_RESOLUTION">
        <extracomment>The picture size of the new movie.</extracomment>
        <source>Resolution</source>
        <translation>Resolución</translation>
    </message>
    <message id="IDS_TXTFLD_QUALITY">
        <source>Quality</source>
        <translation>Calidad</translation>
    </message>
    <message id="IDS_TXT_STATUS">
        <extracomment>Also the whole text of the box shown when a download turns out to be empty.</extracomment>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <!-- Movie list: what the status column says -->
    <message id="IDS_TXT_STATUS_WAITING">
        <source>Waiting</source>
        <translation>En espera</translation>
    </message>
    <message id="IDS_TXT_STATUS_PAUSED">
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message id="IDS_TXT_STATUS_CONVERTED">
        <source>Converted</source>
        <translation>Convertida</translation>
    </message>
    <!-- Qualities: three of each, separated by ';', best first and in the same order everywhere -->
    <message id="IDS_TXT_PROFILELIST">
        <extracomment>The ninth character of each name is a digit.</extracomment>
        <source>H.264 LV0 : Pro, for Editing (largest files);H.264 LV1 : Best Quality;H.264 LV2 : Normal Quality (smaller files)</source>
        <translation>H.264 LV0 : Pro, para edición;H.264 LV1 : Calidad óptima;H.264 LV2 : Calidad normal</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_DROPDOWN">
        <extracomment>The three texts of IDS_TXT_PROFILELIST_1 to _3, joined by ';'.</extracomment>
        <source>Pro, for editing;Best quality;Normal quality</source>
        <translation>Pro, para edición;Calidad óptima;Calidad normal</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_1">
        <source>Pro, for editing</source>
        <translation>Pro, para edición</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_2">
        <source>Best quality</source>
        <translation>Calidad óptima</translation>
    </message>
    <message id="IDS_TXT_PROFILELIST_3">
        <source>Normal quality</source>
        <translation>Calidad normal</translation>
    </message>
    <!-- Message boxes: buttons -->
    <message id="IDS_BTN_POPUP_OK">
        <source>O&amp;K</source>
        <translation>Ac&amp;eptar</translation>
    </message>
    <message id="IDS_BTN_POPUP_CANCEL">
        <source>Ca&amp;ncel</source>
        <translation>Ca&amp;ncelar</translation>
    </message>
    <message id="IDS_BTN_POPUP_SKIP">
        <source>Sk&amp;ip</source>
        <translation>&amp;Omitir</translation>
    </message>
    <message id="IDS_BTN_POPUP_REPLACE">
        <source>&amp;Replace</source>
        <translation>&amp;Reemplazar</translation>
    </message>
    <message id="IDS_BTN_POPUP_DUPLICATE">
        <extracomment>The new movie gets a number in its name.</extracomment>
        <source>Keep &amp;Both</source>
        <translation>Conservar am&amp;bas</translation>
    </message>
    <message id="IDS_BTN_POPUP_TRASH">
        <source>Move to &amp;Trash</source>
        <translation>Mover a la &amp;papelera</translation>
    </message>
    <message id="IDS_BTN_POPUP_ENDSESSION">
        <source>&amp;End Session</source>
        <translation>Cerrar &amp;sesión</translation>
    </message>
    <message id="IDS_TXT_POPUP_TRYAGAIN">
        <extracomment>A button.</extracomment>
        <source>&amp;Try Again</source>
        <translation>Rein&amp;tentar</translation>
    </message>
    <message id="IDS_TXT_POPUP_DOFORERROR">
        <extracomment>A check box below the buttons' question.</extracomment>
        <source>&amp;Do the same for the other movies</source>
        <translation>&amp;Hacer lo mismo con las demás películas</translation>
    </message>
    <!-- Message boxes: output folder -->
    <message id="IDS_TXT_SDCARD_CANNOT_BEUSED">
        <extracomment>First line; IDS_TXT_USE_ANOTHER_FOLDER follows.</extracomment>
        <source>The output folder cannot be on a memory card, a USB stick or another removable disk.</source>
        <translation>La carpeta de salida no puede estar en una tarjeta de memoria, una memoria USB ni otro disco extraíble.</translation>
    </message>
    <message id="IDS_TXT_USE_ANOTHER_FOLDER">
        <extracomment>Second line, after IDS_TXT_SDCARD_CANNOT_BEUSED.</extracomment>
        <source>Please choose another folder, for example one in your home folder.</source>
        <translation>Elija otra carpeta, por ejemplo una de su carpeta personal.</translation>
    </message>
    <message id="IDS_TXT_FAT32_UNSUPPORTED">
        <source>This folder is on a disk with the FAT file system, which cannot hold a movie larger than 4 GB.
Please choose a folder on another disk.</source>
        <translation>Esta carpeta está en un disco con el sistema de archivos FAT, en el que no cabe una película de más de 4 GB.
Elija una carpeta de otro disco.</translation>
    </message>
    <message id="IDS_BTN_POPUP_OUTFLDRUNAVAILABLE">
        <extracomment>A message, in spite of its name.</extracomment>
        <source>The output folder cannot be found. It may have been moved or deleted, or its disk is not connected.
Please press Select Folder… and choose a folder.</source>
        <translation>No se encuentra la carpeta de salida. Puede que se haya movido o eliminado, o que su disco no esté conectado.
Pulse «Seleccionar carpeta…» y elija una carpeta.</translation>
    </message>
    <!-- Message boxes: adding movies -->
    <message id="IDS_TXT_UNSUPPORTED">
        <extracomment>Shown once, for one file or for several.</extracomment>
        <source>Only movies with HEVC (H.265) video can be added.
Files of another kind, and damaged ones, were left out.</source>
        <translation>Solo se pueden añadir películas con vídeo HEVC (H.265).
Se han descartado los archivos de otro tipo y los dañados.</translation>
    </message>
    <message id="IDS_TXT_ADD_ENDED">
        <extracomment>%1 is the name of the file that ended the adding of several.</extracomment>
        <source>“%1” cannot be added.</source>
        <translation>«%1» no se puede añadir.</translation>
    </message>
    <message id="IDS_TXT_ADD_NOT_LOOKED_AT">
        <extracomment>Follows IDS_TXT_ADD_ENDED on the same line. %1 is a number.</extracomment>
        <source>Movies after it that were not looked at: %1</source>
        <translation>Películas siguientes sin examinar: %1</translation>
    </message>
    <message id="IDS_TXT_ADDING">
        <extracomment>While movies are added: %1 is the number of the one at hand, %2 of all.</extracomment>
        <source>Adding movie %1 of %2. Escape ends it after this one.</source>
        <translation>Añadiendo la película %1 de %2. Escape termina después de esta.</translation>
    </message>
    <message id="IDS_TXT_ADD_STOPPED">
        <extracomment>The user has pressed Escape while movies were added. %1 is a number.</extracomment>
        <source>Adding was ended. Movies that were left out: %1</source>
        <translation>Se terminó de añadir. Películas omitidas: %1</translation>
    </message>
    <message id="IDS_TXT_LOOKING_FOR_MOVIES">
        <extracomment>While folders that were dropped are searched.</extracomment>
        <source>Looking for movies in folders. Escape ends it.</source>
        <translation>Buscando películas en carpetas. Escape termina.</translation>
    </message>
    <message id="IDS_TXT_NO_MOVIES_IN_FOLDER">
        <extracomment>A folder was dropped that holds no movie.</extracomment>
        <source>There is no movie in the folder.</source>
        <translation>No hay ninguna película en la carpeta.</translation>
    </message>
    <message id="IDS_TXT_TOO_MANY_MOVIES">
        <extracomment>Folders were dropped that hold more movies. %1 is a number.</extracomment>
        <source>Only the first %1 movies were taken.</source>
        <translation>Solo se tomaron las primeras %1 películas.</translation>
    </message>
    <message id="IDS_TXT_OPENED_LATER">
        <extracomment>A quiet line in the window during a conversion. %1 is a number.</extracomment>
        <source>Movies that will be added after the conversion: %1</source>
        <translation>Películas que se añadirán después de la conversión: %1</translation>
    </message>
    <message id="IDS_CMD_USAGE">
        <extracomment>On a terminal, like all IDS_CMD_ texts. %1 is the program's name and what can follow it.</extracomment>
        <source>Usage: %1</source>
        <translation>Uso: %1</translation>
    </message>
    <message id="IDS_CMD_MOVIE">
        <extracomment>What MOVIE stands for. file: is not translated.</extracomment>
        <source>A movie to be added to the list: a file or a file: address</source>
        <translation>Película que se añade a la lista: un archivo o una dirección file:</translation>
    </message>
    <message id="IDS_CMD_HELP">
        <extracomment>What --help does.</extracomment>
        <source>Shows this help</source>
        <translation>Muestra esta ayuda</translation>
    </message>
    <message id="IDS_CMD_VERSION">
        <extracomment>What --version does.</extracomment>
        <source>Shows the version</source>
        <translation>Muestra la versión</translation>
    </message>
    <message id="IDS_CMD_UNKNOWN_OPTION">
        <extracomment>%1 is what was typed, like --hlep.</extracomment>
        <source>Unknown option: %1</source>
        <translation>Opción desconocida: %1</translation>
    </message>
    <message id="IDS_CMD_SEE_HELP">
        <extracomment>%1 is what is to be typed.</extracomment>
        <source>“%1” shows what is possible.</source>
        <translation>«%1» muestra lo que es posible.</translation>
    </message>
    <message id="IDS_CMD_NO_DISPLAY">
        <extracomment>X11 and Wayland are names.</extracomment>
        <source>No window can be opened: neither an X11 nor a Wayland display can be reached.</source>
        <translation>No se puede abrir ninguna ventana: no se puede acceder a ninguna pantalla X11 ni Wayland.</translation>
    </message>
    <message id="IDS_TXT_SDCARD_DELAY">
        <extracomment>First line; IDS_TXT_CONTINUE follows. Buttons: Cancel, OK.</extracomment>
        <source>This movie is on a memory card or another removable disk. Converting it from there can take longer.</source>
        <translation>Esta película está en una tarjeta de memoria o en otro disco extraíble. Convertirla desde ahí puede tardar más.</translation>
    </message>
    <message id="IDS_TXT_CONTINUE">
        <extracomment>Second line, after IDS_TXT_SDCARD_DELAY.</extracomment>
        <source>Do you want to add it all the same?</source>
        <translation>¿Quiere añadirla de todos modos?</translation>
    </message>
    <message id="IDS_TXT_ENCODER_MISSING">
        <source>Movies cannot be read or converted now, because the program ffmpeg is missing or may not be run.
Please install the package “ffmpeg” with your system’s software manager, then start Quorvex Reelshift again.</source>
        <translation>Ahora no se pueden leer ni convertir películas, porque el programa ffmpeg falta o no se puede ejecutar.
Instale el paquete «ffmpeg» con el gestor de software de su sistema y vuelva a iniciar Quorvex Reelshift.</translation>
    </message>
    <!-- Message boxes: converting -->
    <message id="IDS_TXT_POPUP_SAMENAME">
        <extracomment>The movie's path follows on a line of its own. Buttons: Cancel, Keep Both, Skip, Replace.</extracomment>
        <source>The output folder already has a movie with this name. Cancel stops the whole conversion.</source>
        <translation>La carpeta de salida ya contiene una película con este nombre. «Cancelar» detiene toda la conversión.</translation>
    </message>
    <message id="IDS_TXT_POPUP_ERROR">
        <extracomment>First line; IDS_TXT_POPUP_WANTTOSKIP and the movie's name follow. Buttons: Stop, Skip.</extracomment>
        <source>This movie could not be converted.</source>
        <translation>No se ha podido convertir esta película.</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOSKIP">
        <extracomment>Second line, between IDS_TXT_POPUP_ERROR and the movie's name.</extracomment>
        <source>Do you want to skip it and continue, or stop the conversion?</source>
        <translation>¿Quiere omitirla y continuar, o detener la conversión?</translation>
    </message>
    <message id="IDS_TXT_POPUP_SOURCE_UNAVAILABLE">
        <extracomment>Buttons: Skip, Try Again.</extracomment>
        <source>The original movie cannot be found. It may have been moved or deleted, or its disk is not connected.
Skip this movie, or put it back and try again.</source>
        <translation>No se encuentra la película original. Puede que se haya movido o eliminado, o que su disco no esté conectado.
Omita esta película, o vuelva a ponerla en su sitio y reinténtelo.</translation>
    </message>
    <message id="IDS_TXT_POPUP_UNEXPECTEDREMOVE">
        <extracomment>Buttons: OK, Try Again.</extracomment>
        <source>The original movie disappeared while it was being converted. Was its disk disconnected?
OK ends the conversion. To continue, put the movie back and choose Try Again.</source>
        <translation>La película original ha desaparecido mientras se convertía. ¿Se ha desconectado su disco?
«Aceptar» termina la conversión. Para continuar, vuelva a poner la película en su sitio y elija «Reintentar».</translation>
    </message>
    <message id="IDS_TXT_POPUP_MEMORYFULL">
        <extracomment>First line; IDS_TXT_DATA_NOTCONVERTED follows.</extracomment>
        <source>The output folder is full, or nothing can be written there any more.</source>
        <translation>La carpeta de salida está llena o ya no se puede escribir en ella.</translation>
    </message>
    <message id="IDS_TXT_DATA_NOTCONVERTED">
        <extracomment>Second line, after IDS_TXT_POPUP_MEMORYFULL.</extracomment>
        <source>The movie was not converted. Please make room or choose another folder, then press Convert again.</source>
        <translation>La película no se ha convertido. Libere espacio o elija otra carpeta y pulse de nuevo «Convertir».</translation>
    </message>
    <message id="IDS_TXT_POPUP_INTERRUPTED">
        <extracomment>First line; a path follows, then IDS_TXT_POPUP_WANTTOTRASH.</extracomment>
        <source>The last conversion was interrupted. It has left an unfinished movie that cannot be played:</source>
        <translation>La última conversión se interrumpió. Ha dejado una película incompleta que no se puede reproducir:</translation>
    </message>
    <message id="IDS_TXT_POPUP_WANTTOTRASH">
        <extracomment>Last line, after the path of IDS_TXT_POPUP_INTERRUPTED. Buttons: Cancel, Move to Trash.</extracomment>
        <source>Do you want to move it to the trash? The original movie was not touched.</source>
        <translation>¿Quiere moverla a la papelera? La película original no se ha modificado.</translation>
    </message>
    <message id="IDS_TXT_POPUP_NOTTRASHED">
        <extracomment>First line; a path follows.</extracomment>
        <source>This file could not be moved to the trash. It stays where it is:</source>
        <translation>No se ha podido mover este archivo a la papelera. Se queda donde está:</translation>
    </message>
    <message id="IDS_TXT_POPUP_SESSIONENDS">
        <extracomment>A question during a run. Buttons: Cancel, End Session.</extracomment>
        <source>Movies are being converted. If the session ends now, those that are not finished have to be converted again. Do you want to end the session?</source>
        <translation>Se están convirtiendo películas. Si la sesión termina ahora, las que no estén terminadas tendrán que convertirse de nuevo. ¿Quiere cerrar la sesión?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING">
        <extracomment>First line; IDS_TXT_POPUP_STOPCONVERTING2 follows. Buttons: Cancel, OK.</extracomment>
        <source>Do you want to stop the conversion?</source>
        <translation>¿Quiere detener la conversión?</translation>
    </message>
    <message id="IDS_TXT_POPUP_STOPCONVERTING2">
        <extracomment>Second line, after IDS_TXT_POPUP_STOPCONVERTING.</extracomment>
        <source>Movies that are already converted are kept. An unfinished one has to be converted again from its beginning.</source>
        <translation>Las películas ya convertidas se conservan. Una película sin terminar tendrá que convertirse de nuevo desde el principio.</translation>
    </message>
    <message id="IDS_TXT_POPUP_PUASEDJOBS">
        <extracomment>First line; IDS_TXT_POPUP_CLICKTOCONTINUE follows. Buttons: Cancel, Convert.</extracomment>
        <source>Some movies are still paused.</source>
        <translation>Todavía hay películas en pausa.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CLICKTOCONTINUE">
        <extracomment>Second line, after IDS_TXT_POPUP_PUASEDJOBS.</extracomment>
        <source>Press Convert to resume them.</source>
        <translation>Pulse «Convertir» para continuar con ellas.</translation>
    </message>
    <message id="IDS_TXT_POPUP_OPERATION_SUCCESSFUL">
        <extracomment>Shown after every run, also one that ended early. Buttons: OK, Open Folder.</extracomment>
        <source>The conversion has ended.
Converted movies are in the output folder. Movies that were not converted stay in the list.</source>
        <translation>La conversión ha terminado.
Las películas convertidas están en la carpeta de salida. Las que no se han convertido siguen en la lista.</translation>
    </message>
    <message id="IDS_TXT_POPUP_CONVERSIONCOMPLETE">
        <source>Conversion complete</source>
        <translation>Conversión terminada</translation>
    </message>
    <!-- Update window -->
    <message id="IDS_TXT_NEWVERSION">
        <extracomment>Buttons: OK, Cancel.</extracomment>
        <source>A new version of Quorvex Reelshift is available.
Do you want to download it now? When the installer opens, Quorvex Reelshift closes.</source>
        <translation>Hay una versión nueva de Quorvex Reelshift.
¿Quiere descargarla ahora? Cuando se abra el instalador, Quorvex Reelshift se cerrará.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TITLE">
        <extracomment>Title of the window.</extracomment>
        <source>Quorvex Reelshift Update</source>
        <translation>Actualización de Quorvex Reelshift</translation>
    </message>
    <message id="IDS_TXT_DOWNLOADING">
        <extracomment>Above the progress bar.</extracomment>
        <source>Downloading the new version…</source>
        <translation>Descargando la versión nueva…</translation>
    </message>
    <message id="IDS_A11Y_DOWNLOAD_PROGRESS">
        <source>Download progress</source>
        <translation>Progreso de la descarga</translation>
    </message>
    <message id="IDS_TXT_UPDATE_TIMEOUT">
        <source>The update server does not answer.</source>
        <translation>El servidor de actualizaciones no responde.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_UNUSABLE">
        <source>The answer of the update server cannot be used.</source>
        <translation>La respuesta del servidor de actualizaciones no se puede utilizar.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_HOST">
        <source>The update server cannot be found.</source>
        <translation>No se encuentra el servidor de actualizaciones.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_SECURE">
        <source>The update server cannot prove that it is the right one.</source>
        <translation>El servidor de actualizaciones no puede demostrar su identidad.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_CUT">
        <source>The update server closed the connection too soon.</source>
        <translation>El servidor de actualizaciones cerró la conexión demasiado pronto.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_REFUSED">
        <extracomment>What the server said follows on the same line.</extracomment>
        <source>The update server answers:</source>
        <translation>Respuesta del servidor de actualizaciones:</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NO_DOWNLOADS">
        <source>The Downloads folder cannot be created.</source>
        <translation>No se puede crear la carpeta de descargas.</translation>
    </message>
    <message id="IDS_TXT_UPDATE_NOT_OPENED">
        <extracomment>First line; the path of the downloaded file follows.</extracomment>
        <source>The installer could not be opened. It is here:</source>
        <translation>No se ha podido abrir el instalador. Está aquí:</translation>
    </message>
    <!-- Panels -->
    <message id="IDS_TXT_PANEL_ADD">
        <source>Add Movies</source>
        <translation>Añadir películas</translation>
    </message>
    <message id="IDS_TXT_PANEL_FILTER">
        <extracomment>The patterns in parentheses stay as they are.</extracomment>
        <source>MP4 movies (*.mp4 *.MP4)</source>
        <translation>Películas MP4 (*.mp4 *.MP4)</translation>
    </message>
    <message id="IDS_TXT_PANEL_FOLDER">
        <source>Select Output Folder</source>
        <translation>Seleccionar la carpeta de salida</translation>
    </message>
    <!-- Tooltips -->
    <message id="IDS_TIP_ADD_FILE">
        <source>Choose HEVC movies to add to the list</source>
        <translation>Elegir películas HEVC para añadirlas a la lista</translation>
    </message>
    <message id="IDS_TIP_REMOVE_FILE">
        <source>Take all checked movies off the list. The files themselves stay where they are</source>
        <translation>Quitar de la lista todas las películas marcadas. Los archivos se quedan donde están</translation>
    </message>
    <message id="IDS_TIP_CONVERT">
        <source>Convert every waiting movie in the list, checked or not</source>
        <translation>Convertir todas las películas en espera de la lista, marcadas o no</translation>
    </message>
    <message id="IDS_TIP_STOP">
        <source>Stop the whole conversion</source>
        <translation>Detener toda la conversión</translation>
    </message>
    <message id="IDS_TIP_SELECT_FOLDER">
        <source>Choose where the converted movies are saved</source>
        <translation>Elegir dónde se guardan las películas convertidas</translation>
    </message>
    <message id="IDS_TIP_OPEN_FOLDER">
        <source>Show the output folder in the file manager</source>
        <translation>Mostrar la carpeta de salida en el gestor de archivos</translation>
    </message>
    <message id="IDS_TIP_OUTPUT_FOLDER">
        <source>Converted movies are saved here</source>
        <translation>Las películas convertidas se guardan aquí</translation>
    </message>
    <message id="IDS_TIP_OPEN_AFTER_FINISH">
        <source>The box at the end of a conversion offers to open the output folder. Opening it there clears this check mark</source>
        <translation>Al terminar una conversión se ofrece abrir la carpeta de salida. Si se abre desde allí, esta casilla se desmarca</translation>
    </message>
    <message id="IDS_TIP_PROFILE">
        <source>Sets the quality of all checked movies, or of the selected movie when none is checked.
Pro keeps the most detail in the largest files. Normal makes the smallest ones</source>
        <translation>Establece la calidad de todas las películas marcadas, o de la seleccionada si no hay ninguna marcada.
«Pro» conserva más detalle en los archivos más grandes. «Normal» crea los más pequeños</translation>
    </message>
    <message id="IDS_TIP_SELECT_ALL">
        <source>Check or uncheck all movies</source>
        <translation>Marcar o desmarcar todas las películas</translation>
    </message>
    <message id="IDS_TIP_TABLE">
        <source>Drop movies here to add them. Drag rows to change the order of conversion</source>
        <translation>Suelte aquí películas para añadirlas. Arrastre las filas para cambiar el orden de conversión</translation>
    </message>
    <message id="IDS_TIP_CELL_CHECK">
        <source>Checked movies take the quality chosen above the list and can be removed together</source>
        <translation>Las películas marcadas reciben la calidad elegida encima de la lista y se pueden quitar juntas</translation>
    </message>
    <message id="IDS_TIP_CELL_PROFILE">
        <source>Click to choose this movie’s quality</source>
        <translation>Pulse para elegir la calidad de esta película</translation>
    </message>
    <message id="IDS_TIP_CELL_LOCKED">
        <source>Can be chosen again after the conversion</source>
        <translation>Se podrá elegir de nuevo después de la conversión</translation>
    </message>
    <message id="IDS_TIP_CELL_RESOLUTION">
        <source>Click to choose this movie’s picture size</source>
        <translation>Pulse para elegir el tamaño de imagen de esta película</translation>
    </message>
    <message id="IDS_TIP_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1 from the list</source>
        <translation>Quitar %1 de la lista</translation>
    </message>
    <message id="IDS_TIP_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause the conversion of %1</source>
        <translation>Pausar la conversión de %1</translation>
    </message>
    <message id="IDS_TIP_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume the conversion of %1</source>
        <translation>Reanudar la conversión de %1</translation>
    </message>
    <!-- Names that screen readers speak, for what carries no text of its own -->
    <message id="IDS_A11Y_TABLE">
        <source>Movies to convert</source>
        <translation>Películas para convertir</translation>
    </message>
    <message id="IDS_A11Y_OUTPUT_FOLDER">
        <source>Output folder</source>
        <translation>Carpeta de salida</translation>
    </message>
    <message id="IDS_A11Y_OPEN_AFTER_FINISH">
        <source>Open the folder when finished</source>
        <translation>Abrir la carpeta al terminar</translation>
    </message>
    <message id="IDS_A11Y_PROFILE">
        <source>Quality of checked movies</source>
        <translation>Calidad de las películas marcadas</translation>
    </message>
    <message id="IDS_A11Y_SELECT_ALL">
        <source>Check all movies</source>
        <translation>Marcar todas las películas</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_CHECK">
        <source>Checked</source>
        <translation>Marcada</translation>
    </message>
    <message id="IDS_A11Y_COLUMN_BUTTON">
        <source>Action</source>
        <translation>Acción</translation>
    </message>
    <message id="IDS_A11Y_ROW_REMOVE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Remove %1</source>
        <translation>Quitar %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_PAUSE">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Pause %1</source>
        <translation>Pausar %1</translation>
    </message>
    <message id="IDS_A11Y_ROW_RESUME">
        <extracomment>%1 is the movie's file name.</extracomment>
        <source>Resume %1</source>
        <translation>Reanudar %1</translation>
    </message>
    <message id="IDS_TXT_CHECKED">
        <source>checked</source>
        <translation>marcada</translation>
    </message>
    <message id="IDS_TXT_UNCHECKED">
        <source>not checked</source>
        <translation>sin marcar</translation>
    </message>
    <message id="IDS_TXT_ENCODER_UNSUITABLE">
        <extracomment>Shown once, like IDS_TXT_ENCODER_MISSING. libx264 is a name.</extracomment>
        <source>Movies cannot be converted now, because the installed ffmpeg has no H.264 encoder (libx264).</source>
        <translation>Ahora no se pueden convertir películas, porque el ffmpeg instalado no tiene codificador H.264 (libx264).</translation>
    </message>
    <message id="IDS_TXT_NOT_KEPT_AWAKE">
        <extracomment>A quiet line in the window during a conversion.</extracomment>
        <source>The computer may go to sleep during the conversion.</source>
        <translation>El equipo podría suspenderse durante la conversión.</translation>
    </message>
    <message id="IDS_TXT_KEEP_AWAKE_REASON">
        <extracomment>Told to the desktop, which may show it: why it must not go to sleep.</extracomment>
        <source>Movies are being converted</source>
        <translation>Se están convirtiendo películas</translation>
    </message>
    <message id="IDS_TXT_RUN_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Converted: %1</source>
        <translation>Convertidas: %1</translation>
    </message>
    <message id="IDS_TXT_RUN_NOT_CONVERTED">
        <extracomment>In the notification at the end. %1 is a number.</extracomment>
        <source>Not converted: %1</source>
        <translation>Sin convertir: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_MOVIE">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for this movie: %1</source>
        <translation>Tiempo restante de esta película: %1</translation>
    </message>
    <message id="IDS_TXT_LEFT_RUN">
        <extracomment>%1 is a time, like IDS_TXT_LEFT_MINUTES.</extracomment>
        <source>Time left for all movies: %1</source>
        <translation>Tiempo restante de todas las películas: %1</translation>
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
        <translation>Ayuda</translation>
    </message>
    <message id="IDS_MENU_ABOUT">
        <extracomment>In the context menu, and the title of the window that it opens. Quorvex Reelshift is the program's name.</extracomment>
        <source>About Quorvex Reelshift</source>
        <translation>Acerca de Quorvex Reelshift</translation>
    </message>
    <message id="IDS_MENU_COPY_DETAILS">
        <extracomment>In the context menu of a movie that was not converted: copies what is known of the failure, for a report.</extracomment>
        <source>Copy Details</source>
        <translation>Copiar los detalles</translation>
    </message>
    <message id="IDS_TXT_DETAILS_COPIED">
        <extracomment>A quiet line in the window, after IDS_MENU_COPY_DETAILS.</extracomment>
        <source>The details are in the clipboard.</source>
        <translation>Los detalles están en el portapapeles.</translation>
    </message>
    <message id="IDS_HELP_KEYS">
        <extracomment>A heading over a list of keys and what they do.</extracomment>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
    <message id="IDS_ABOUT_ENCODER">
        <extracomment>%1 is a version, %2 a path.</extracomment>
        <source>ffmpeg: version %1, at %2</source>
        <translation>ffmpeg: versión %1, en %2</translation>
    </message>
    <message id="IDS_ABOUT_NO_ENCODER">
        <source>ffmpeg: not found</source>
        <translation>ffmpeg: no se ha encontrado</translation>
    </message>
    <message id="IDS_ABOUT_USES">
        <extracomment>A list of libraries with their licences follows.</extracomment>
        <source>Used by this program, with their licences:</source>
        <translation>Este programa utiliza, con sus licencias:</translation>
    </message>
    <message id="IDS_BTN_CLOSE">
        <extracomment>The button of the windows of IDS_MENU_HELP and IDS_MENU_ABOUT.</extracomment>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message id="IDS_A11Y_ROW_STATUS">
        <extracomment>Said by a screen reader: movie %1 now has the status %2.</extracomment>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="IDS_A11Y_ROW_PROGRESS">
        <extracomment>Status of a movie while it is converted, for screen readers.</extracomment>
        <source>Converting</source>
        <translation>Convirtiendo</translation>
    </message>
</context>
</TS>
