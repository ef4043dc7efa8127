<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>BleReplyAssembler</name>
    <message>
        <source>the device reply was truncated (a fragment was lost)</source>
        <translation>die Antwort des Geräts ist unvollständig (ein Fragment ging verloren)</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>nothing to install</source>
        <translation>nichts zu installieren</translation>
    </message>
    <message>
        <source>%1 is in use</source>
        <translation>%1 wird gerade verwendet</translation>
    </message>
    <message>
        <source>could not write %1</source>
        <translation>%1 konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the package is empty</source>
        <translation>das Paket ist leer</translation>
    </message>
    <message>
        <source>could not remove %1</source>
        <translation>%1 konnte nicht entfernt werden</translation>
    </message>
    <message>
        <source>The update package was not in the expected shape. Nothing was changed.</source>
        <translation>Das Update-Paket ist nicht wie erwartet aufgebaut. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>The update package contained an unexpected link, so it was rejected. Nothing was changed.</source>
        <translation>Das Update-Paket enthält eine unerwartete Verknüpfung und wurde abgelehnt. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>The update package did not contain the plugin for this computer. Nothing was changed.</source>
        <translation>Das Update-Paket enthält kein Plugin für diesen Computer. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Version %1 is out, but not available for this computer yet.</source>
        <translation>Version %1 ist erschienen, aber für diesen Computer noch nicht verfügbar.</translation>
    </message>
    <message>
        <source>The update information is incomplete.</source>
        <translation>Die Update-Informationen sind unvollständig.</translation>
    </message>
    <message>
        <source>Version %1 needs OBS %2 or newer (this is OBS %3).</source>
        <translation>Version %1 benötigt OBS %2 oder neuer (installiert ist OBS %3).</translation>
    </message>
    <message>
        <source>The update information was not readable.</source>
        <translation>Die Update-Informationen konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>This update needs a newer Tallyforge plugin than the one installed. Download the installer from the Tallyforge website.</source>
        <translation>Dieses Update benötigt ein neueres Tallyforge-Plugin als das installierte. Laden Sie das Installationsprogramm von der Tallyforge-Website herunter.</translation>
    </message>
    <message>
        <source>The update information has no valid version.</source>
        <translation>Die Update-Informationen enthalten keine gültige Version.</translation>
    </message>
    <message>
        <source>The update could not be installed (%1). The current version was left in place.</source>
        <translation>Das Update konnte nicht installiert werden (%1). Die bisherige Version bleibt erhalten.</translation>
    </message>
</context>
<context>
    <name>tallyforge::AccountLists</name>
    <message>
        <source>Sign in from the Tallyforge dock to see your graphics.</source>
        <translation>Melden Sie sich im Tallyforge-Dock an, um Ihre Grafiken zu sehen.</translation>
    </message>
</context>
<context>
    <name>tallyforge::BleBridge</name>
    <message>
        <source>The Bluetooth helper is missing from this install. Reinstall the Tallyforge plugin.</source>
        <translation>Das Bluetooth-Hilfsprogramm fehlt in dieser Installation. Installieren Sie das Tallyforge-Plugin neu.</translation>
    </message>
    <message>
        <source>Could not open a local port for the Bluetooth helper.</source>
        <translation>Für das Bluetooth-Hilfsprogramm konnte kein lokaler Port geöffnet werden.</translation>
    </message>
    <message>
        <source>The Bluetooth helper did not start. Bluetooth setup is unavailable on this system.</source>
        <translation>Das Bluetooth-Hilfsprogramm ist nicht gestartet. Die Einrichtung über Bluetooth ist auf diesem System nicht verfügbar.</translation>
    </message>
    <message>
        <source>The Bluetooth helper stopped.</source>
        <translation>Das Bluetooth-Hilfsprogramm wurde beendet.</translation>
    </message>
    <message>
        <source>Bluetooth did not respond in time.</source>
        <translation>Bluetooth hat nicht rechtzeitig geantwortet.</translation>
    </message>
</context>
<context>
    <name>tallyforge::BleHelperLines</name>
    <message>
        <source>Bluetooth error</source>
        <translation>Bluetooth-Fehler</translation>
    </message>
</context>
<context>
    <name>tallyforge::BleLink</name>
    <message>
        <source>Bluetooth link lost</source>
        <translation>Bluetooth-Verbindung verloren</translation>
    </message>
    <message>
        <source>The Bluetooth helper stopped</source>
        <translation>Das Bluetooth-Hilfsprogramm wurde beendet</translation>
    </message>
</context>
<context>
    <name>tallyforge::BleTransport</name>
    <message>
        <source>Not connected to a device</source>
        <translation>Nicht mit einem Gerät verbunden</translation>
    </message>
    <message>
        <source>That request is too large for the device</source>
        <translation>Diese Anfrage ist zu groß für das Gerät</translation>
    </message>
    <message>
        <source>This computer is not paired with the device yet. Pair it once with the 6-digit passkey from the device&apos;s label or your Tallyforge account (macOS asks automatically; on Windows pair it in Bluetooth settings first), then connect again.</source>
        <translation>Dieser Computer ist noch nicht mit dem Gerät gekoppelt. Koppeln Sie ihn einmalig mit dem 6-stelligen Kopplungscode vom Aufkleber des Geräts oder aus Ihrem Tallyforge-Konto (macOS fragt automatisch danach; unter Windows koppeln Sie das Gerät zuerst in den Bluetooth-Einstellungen) und verbinden Sie sich dann erneut.</translation>
    </message>
</context>
<context>
    <name>tallyforge::BluetoothHelper</name>
    <message>
        <source>This computer is not paired with the device. Pair it in the system&apos;s Bluetooth settings with the device&apos;s passkey, then connect again.</source>
        <translation>Dieser Computer ist nicht mit dem Gerät gekoppelt. Koppeln Sie es in den Bluetooth-Einstellungen des Systems mit dem Kopplungscode des Geräts und verbinden Sie es dann erneut.</translation>
    </message>
    <message>
        <source>Bluetooth was stopped on this computer.</source>
        <translation>Bluetooth wurde auf diesem Computer beendet.</translation>
    </message>
    <message>
        <source>The connection to the device was given up.</source>
        <translation>Die Verbindung zum Gerät wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The connection to the device was closed.</source>
        <translation>Die Verbindung zum Gerät wurde geschlossen.</translation>
    </message>
    <message>
        <source>The connection to the device was lost.</source>
        <translation>Die Verbindung zum Gerät ist verloren gegangen.</translation>
    </message>
    <message>
        <source>The device ended the Bluetooth connection before it was ready.</source>
        <translation>Das Gerät hat die Bluetooth-Verbindung beendet, bevor sie bereit war.</translation>
    </message>
    <message>
        <source>The device did not answer over Bluetooth in time.</source>
        <translation>Das Gerät hat über Bluetooth nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>The device did not confirm the request in time.</source>
        <translation>Das Gerät hat die Anfrage nicht rechtzeitig bestätigt.</translation>
    </message>
    <message>
        <source>The device stopped answering over Bluetooth.</source>
        <translation>Das Gerät antwortet über Bluetooth nicht mehr.</translation>
    </message>
    <message>
        <source>The device was not found over Bluetooth. Check that it is powered and near this computer, then search again.</source>
        <translation>Das Gerät wurde über Bluetooth nicht gefunden. Prüfen Sie, ob es mit Strom versorgt und in der Nähe dieses Computers ist, und suchen Sie dann erneut.</translation>
    </message>
    <message>
        <source>Could not connect to the device over Bluetooth. Check that it is powered, near this computer and not connected to another one.</source>
        <translation>Die Verbindung zum Gerät über Bluetooth ist fehlgeschlagen. Prüfen Sie, ob es mit Strom versorgt, in der Nähe dieses Computers und nicht mit einem anderen verbunden ist.</translation>
    </message>
    <message>
        <source>This device does not offer setup over Bluetooth.</source>
        <translation>Dieses Gerät lässt sich nicht über Bluetooth einrichten.</translation>
    </message>
    <message>
        <source>The device did not take the request.</source>
        <translation>Das Gerät hat die Anfrage nicht angenommen.</translation>
    </message>
    <message>
        <source>The device did not let this computer listen to it.</source>
        <translation>Das Gerät hat diesem Computer nicht erlaubt, seine Antworten zu empfangen.</translation>
    </message>
    <message>
        <source>The search for Bluetooth devices failed. Try again; if it keeps failing, switch Bluetooth off and on.</source>
        <translation>Die Suche nach Bluetooth-Geräten ist fehlgeschlagen. Versuchen Sie es erneut; wenn es weiterhin fehlschlägt, schalten Sie Bluetooth aus und wieder ein.</translation>
    </message>
    <message>
        <source>Bluetooth is still busy with the request before.</source>
        <translation>Bluetooth ist noch mit der vorigen Anfrage beschäftigt.</translation>
    </message>
    <message>
        <source>The Bluetooth helper does not know that request.</source>
        <translation>Das Bluetooth-Hilfsprogramm kennt diese Anfrage nicht.</translation>
    </message>
    <message>
        <source>A newer search has taken the place of this one.</source>
        <translation>Eine neuere Suche hat diese abgelöst.</translation>
    </message>
    <message>
        <source>That is not a Bluetooth device.</source>
        <translation>Das ist kein Bluetooth-Gerät.</translation>
    </message>
    <message>
        <source>Another device was connected over Bluetooth.</source>
        <translation>Ein anderes Gerät wurde über Bluetooth verbunden.</translation>
    </message>
    <message>
        <source>No device is connected.</source>
        <translation>Es ist kein Gerät verbunden.</translation>
    </message>
    <message>
        <source>There is nothing to write.</source>
        <translation>Es gibt nichts zu schreiben.</translation>
    </message>
    <message>
        <source>Bluetooth is switched off on this computer. Switch it on in the system&apos;s settings, then try again.</source>
        <translation>Bluetooth ist auf diesem Computer ausgeschaltet. Schalten Sie es in den Systemeinstellungen ein und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The Bluetooth adapter of this computer is gone.</source>
        <translation>Der Bluetooth-Adapter dieses Computers ist nicht mehr da.</translation>
    </message>
    <message>
        <source>Bluetooth is not allowed for Tallyforge. Allow it in the system&apos;s privacy settings, then try again.</source>
        <translation>Bluetooth ist für Tallyforge nicht erlaubt. Erlauben Sie es in den Datenschutzeinstellungen des Systems und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>This user may not use Bluetooth on this computer. Ask the computer&apos;s administrator for access to it.</source>
        <translation>Dieser Benutzer darf Bluetooth auf diesem Computer nicht verwenden. Bitten Sie die Administration des Computers um Zugriff.</translation>
    </message>
    <message>
        <source>The Bluetooth service of this computer is not running. Install BlueZ or start its service &quot;bluetooth&quot;, then try again.</source>
        <translation>Der Bluetooth-Dienst dieses Computers läuft nicht. Installieren Sie BlueZ oder starten Sie den Dienst „bluetooth“ und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>This computer has no Bluetooth adapter, or it is blocked. Plug one in or unblock it, then try again.</source>
        <translation>Dieser Computer hat keinen Bluetooth-Adapter, oder er ist blockiert. Schließen Sie einen an oder heben Sie die Blockierung auf und versuchen Sie es dann erneut.</translation>
    </message>
</context>
<context>
    <name>tallyforge::DeviceSession</name>
    <message>
        <source>This device is set to send its scores to a wireless receiver, so its Wi-Fi is switched off and it cannot see networks. Turn the wireless link off to use Wi-Fi.</source>
        <translation>Dieses Gerät sendet seine Spielstände an einen Funkempfänger. Daher ist sein WLAN ausgeschaltet und es kann keine Netzwerke sehen. Schalten Sie die Funkverbindung aus, um WLAN zu verwenden.</translation>
    </message>
    <message>
        <source>Checking that the device can join %1…</source>
        <translation>Es wird geprüft, ob sich das Gerät mit %1 verbinden kann …</translation>
    </message>
    <message>
        <source>Joined %1%2.</source>
        <translation>Verbunden mit %1%2.</translation>
    </message>
    <message>
        <source>The device could not join %1%2. Check the password and try again.</source>
        <translation>Das Gerät konnte sich nicht mit %1%2 verbinden. Überprüfen Sie das Passwort und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The device is still working on joining %1. Check back in a minute.</source>
        <translation>Das Gerät versucht noch, sich mit %1 zu verbinden. Sehen Sie in einer Minute wieder nach.</translation>
    </message>
    <message>
        <source>Checking that the device can join %1… (%2 s)</source>
        <translation>Es wird geprüft, ob sich das Gerät mit %1 verbinden kann … (%2 s)</translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation>Verbindung getrennt</translation>
    </message>
    <message>
        <source>The connection to the device was lost</source>
        <translation>Die Verbindung zum Gerät wurde unterbrochen</translation>
    </message>
    <message>
        <source>The paired device did not answer through the receiver. Check that the device is powered, in range of the receiver and linked to it, then try again.</source>
        <translation>Das gekoppelte Gerät hat nicht über den Empfänger geantwortet. Überprüfen Sie, ob das Gerät eingeschaltet, in Reichweite des Empfängers und mit ihm verbunden ist, und versuchen Sie es erneut.</translation>
    </message>
</context>
<context>
    <name>tallyforge::DevicesGroup</name>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Stop sharing this computer&apos;s internet with USB devices</source>
        <translation>Internet dieses Computers nicht mehr mit USB-Geräten teilen</translation>
    </message>
    <message>
        <source>This comes with a later version of the plugin.</source>
        <translation>Diese Funktion kommt mit einer späteren Version des Plugins.</translation>
    </message>
    <message>
        <source>Set up or manage a device…</source>
        <translation>Gerät einrichten oder verwalten …</translation>
    </message>
    <message>
        <source>Manage the selected device through my account…</source>
        <translation>Ausgewähltes Gerät über mein Konto verwalten …</translation>
    </message>
    <message>
        <source>USB cloud relay</source>
        <translation>USB-Cloud-Weiterleitung</translation>
    </message>
</context>
<context>
    <name>tallyforge::HostedServer</name>
    <message>
        <source>Could not listen on port %1: %2</source>
        <translation>Port %1 konnte nicht geöffnet werden: %2</translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpAdminTransport</name>
    <message>
        <source>Not connected to a device</source>
        <translation>Nicht mit einem Gerät verbunden</translation>
    </message>
    <message>
        <source>This is only available over USB or Bluetooth, not over the network.</source>
        <translation>Dies ist nur über USB oder Bluetooth verfügbar, nicht über das Netzwerk.</translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpAnswer</name>
    <message>
        <source>The device answered with an error (%1).</source>
        <translation>Das Gerät hat mit einem Fehler geantwortet (%1).</translation>
    </message>
    <message>
        <source>Could not reach the device on your network.</source>
        <translation>Das Gerät ist in Ihrem Netzwerk nicht erreichbar.</translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpLink</name>
    <message>
        <source>Could not reach %1 on your network. Check the address, and that this computer and the device are on the same network.</source>
        <translation>%1 ist in Ihrem Netzwerk nicht erreichbar. Überprüfen Sie die Adresse und ob sich dieser Computer und das Gerät im selben Netzwerk befinden.</translation>
    </message>
</context>
<context>
    <name>tallyforge::PluginUpdater</name>
    <message>
        <source>The update address is not valid.</source>
        <translation>Die Update-Adresse ist ungültig.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Es wird nach Updates gesucht …</translation>
    </message>
    <message>
        <source>Could not reach the Tallyforge update service. Check your internet connection.</source>
        <translation>Der Update-Dienst von Tallyforge ist nicht erreichbar. Überprüfen Sie Ihre Internetverbindung.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>Version %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Tallyforge %1 is up to date.</source>
        <translation>Tallyforge %1 ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>the Tallyforge website</source>
        <translation>der Tallyforge-Website</translation>
    </message>
    <message>
        <source>This copy of the plugin was installed for all users, so it cannot update itself. Download and run the installer from %1.</source>
        <translation>Dieses Plugin wurde für alle Benutzer installiert und kann sich daher nicht selbst aktualisieren. Laden Sie das Installationsprogramm von %1 herunter und führen Sie es aus.</translation>
    </message>
    <message>
        <source>Could not prepare a download folder (%1).</source>
        <translation>Der Ordner für den Download konnte nicht angelegt werden (%1).</translation>
    </message>
    <message>
        <source>Could not write the update to disk.</source>
        <translation>Das Update konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Downloading version %1…</source>
        <translation>Version %1 wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Downloading version %1… %2%</source>
        <translation>Version %1 wird heruntergeladen … %2 %</translation>
    </message>
    <message>
        <source>The download was larger than expected, so it was discarded.</source>
        <translation>Der Download war größer als erwartet und wurde verworfen.</translation>
    </message>
    <message>
        <source>The download did not finish. Check your internet connection and try again.</source>
        <translation>Der Download wurde nicht abgeschlossen. Überprüfen Sie Ihre Internetverbindung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The download was incomplete, so it was discarded. Try again.</source>
        <translation>Der Download war unvollständig und wurde verworfen. Versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The download did not match its checksum, so it was discarded. Nothing was changed.</source>
        <translation>Der Download stimmt nicht mit seiner Prüfsumme überein und wurde verworfen. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Version %1 wird installiert …</translation>
    </message>
    <message>
        <source>The update could not be unpacked on this computer. Nothing was changed.</source>
        <translation>Das Update konnte auf diesem Computer nicht entpackt werden. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>The update could not be unpacked. Nothing was changed.</source>
        <translation>Das Update konnte nicht entpackt werden. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Version %1 is installed. Restart OBS to start using it.</source>
        <translation>Version %1 ist installiert. Starten Sie OBS neu, um sie zu verwenden.</translation>
    </message>
</context>
<context>
    <name>tallyforge::PortalClient</name>
    <message>
        <source>That email and password did not match. Check them and try again.</source>
        <translation>E-Mail-Adresse und Passwort passen nicht zusammen. Überprüfen Sie beide und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>That code was not accepted. Enter the current 6-digit code from your authenticator app.</source>
        <translation>Dieser Code wurde nicht angenommen. Geben Sie den aktuellen 6-stelligen Code aus Ihrer Authentifizierungs-App ein.</translation>
    </message>
    <message>
        <source>Too many attempts. Wait a minute and try again.</source>
        <translation>Zu viele Versuche. Warten Sie eine Minute und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The device did not answer. Check that it is powered on and online.</source>
        <translation>Das Gerät hat nicht geantwortet. Überprüfen Sie, ob es eingeschaltet und online ist.</translation>
    </message>
    <message>
        <source>The Tallyforge service could not reach the live data feed. Try again shortly.</source>
        <translation>Der Tallyforge-Dienst kann die Live-Daten nicht abrufen. Versuchen Sie es in Kürze erneut.</translation>
    </message>
    <message>
        <source>That device is not on this account.</source>
        <translation>Dieses Gerät gehört nicht zu diesem Konto.</translation>
    </message>
    <message>
        <source>You have been signed out. Sign in again.</source>
        <translation>Sie wurden abgemeldet. Melden Sie sich erneut an.</translation>
    </message>
    <message>
        <source>Could not reach Tallyforge. Check your internet connection.</source>
        <translation>Tallyforge ist nicht erreichbar. Überprüfen Sie Ihre Internetverbindung.</translation>
    </message>
    <message>
        <source>Your account role is not allowed to do that.</source>
        <translation>Die Rolle Ihres Kontos erlaubt das nicht.</translation>
    </message>
    <message>
        <source>Tallyforge returned an error (%1).</source>
        <translation>Tallyforge hat einen Fehler gemeldet (%1).</translation>
    </message>
</context>
<context>
    <name>tallyforge::ReceiverRequest</name>
    <message>
        <source>The receiver did not answer</source>
        <translation>Der Empfänger hat nicht geantwortet</translation>
    </message>
    <message>
        <source>The receiver refused the settings</source>
        <translation>Der Empfänger hat die Einstellungen abgelehnt</translation>
    </message>
    <message>
        <source>Another receiver request is still in progress</source>
        <translation>Eine andere Anfrage an den Empfänger läuft noch</translation>
    </message>
    <message>
        <source>Give a key, ask for a new key, or choose a channel</source>
        <translation>Geben Sie einen Schlüssel an, fordern Sie einen neuen an oder wählen Sie einen Kanal</translation>
    </message>
</context>
<context>
    <name>tallyforge::RpcClient</name>
    <message>
        <source>Not connected to a device</source>
        <translation>Nicht mit einem Gerät verbunden</translation>
    </message>
    <message>
        <source>The device rejected &apos;%1&apos;</source>
        <translation>Das Gerät hat „%1“ abgelehnt</translation>
    </message>
    <message>
        <source>The device did not answer &apos;%1&apos; in time</source>
        <translation>Das Gerät hat auf „%1“ nicht rechtzeitig geantwortet</translation>
    </message>
</context>
<context>
    <name>tallyforge::SceneGroup</name>
    <message>
        <source>Show it in OBS</source>
        <translation>In OBS anzeigen</translation>
    </message>
    <message>
        <source>Add live score text to this scene</source>
        <translation>Live-Spielstand als Text zu dieser Szene hinzufügen</translation>
    </message>
    <message>
        <source>Tallyforge Score</source>
        <translation>Tallyforge-Spielstand</translation>
    </message>
    <message>
        <source>Add a graphic to this scene</source>
        <translation>Grafik zu dieser Szene hinzufügen</translation>
    </message>
    <message>
        <source>Tallyforge Graphics</source>
        <translation>Tallyforge-Grafik</translation>
    </message>
    <message>
        <source>Graphics come from your Tallyforge account. Pick one from the list in the source&apos;s properties.</source>
        <translation>Grafiken kommen aus Ihrem Tallyforge-Konto. Wählen Sie in den Eigenschaften der Quelle eine aus der Liste aus.</translation>
    </message>
</context>
<context>
    <name>tallyforge::ScoreboardGroup</name>
    <message>
        <source>Scoreboard</source>
        <translation>Anzeigetafel</translation>
    </message>
    <message>
        <source>Use my local network (works without internet)</source>
        <translation>Mein lokales Netzwerk verwenden (funktioniert ohne Internet)</translation>
    </message>
    <message>
        <source>No devices on this account yet</source>
        <translation>Noch keine Geräte in diesem Konto</translation>
    </message>
    <message>
        <source>Pick a scoreboard above.</source>
        <translation>Wählen Sie oben eine Anzeigetafel aus.</translation>
    </message>
</context>
<context>
    <name>tallyforge::SerialPort</name>
    <message>
        <source>That USB port is in use by another program (close any serial monitor) or access was denied.</source>
        <translation>Dieser USB-Anschluss wird von einem anderen Programm verwendet (schließen Sie serielle Monitore) oder der Zugriff wurde verweigert.</translation>
    </message>
    <message>
        <source>Could not open the USB port: %1</source>
        <translation>Der USB-Anschluss konnte nicht geöffnet werden: %1</translation>
    </message>
    <message>
        <source>That is not a serial port.</source>
        <translation>Dies ist kein serieller Anschluss.</translation>
    </message>
    <message>
        <source>The USB device was unplugged or stopped responding.</source>
        <translation>Das USB-Gerät wurde getrennt oder antwortet nicht mehr.</translation>
    </message>
</context>
<context>
    <name>tallyforge::ServerGroup</name>
    <message>
        <source>Share live data with other programs</source>
        <translation>Live-Daten für andere Programme</translation>
    </message>
    <message>
        <source>Send scores over TCP</source>
        <translation>Spielstände über TCP senden</translation>
    </message>
    <message>
        <source>Let other computers on my network connect</source>
        <translation>Verbindungen von anderen Computern in meinem Netzwerk erlauben</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Off.</source>
        <translation>Aus.</translation>
    </message>
    <message>
        <source>Could not start - port %1 may be in use. Try another port.</source>
        <translation>Start nicht möglich – Port %1 ist möglicherweise belegt. Versuchen Sie einen anderen Port.</translation>
    </message>
    <message>
        <source>this computer&apos;s address</source>
        <translation>der Adresse dieses Computers</translation>
    </message>
    <message>
        <source>Connect to %1:%2 and read one JSON line per update. %3 connected.</source>
        <translation>Verbinden Sie sich mit %1:%2 und lesen Sie pro Änderung eine JSON-Zeile. %3 verbunden.</translation>
    </message>
</context>
<context>
    <name>tallyforge::SignInForm</name>
    <message>
        <source>Tallyforge account (optional)</source>
        <translation>Tallyforge-Konto (optional)</translation>
    </message>
    <message>
        <source>Sign in to see your account&apos;s devices and graphics. Not needed to set up or manage a device, or to show scores from one connected to this computer.</source>
        <translation>Melden Sie sich an, um die Geräte und Grafiken Ihres Kontos zu sehen. Zum Einrichten oder Verwalten eines Geräts und zum Anzeigen der Spielstände eines mit diesem Computer verbundenen Geräts ist das nicht nötig.</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Email</source>
        <translation>E-Mail-Adresse</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>6-digit code from your authenticator app</source>
        <translation>6-stelliger Code aus Ihrer Authentifizierungs-App</translation>
    </message>
    <message>
        <source>Create an account</source>
        <translation>Konto erstellen</translation>
    </message>
    <message>
        <source>Forgot password?</source>
        <translation>Passwort vergessen?</translation>
    </message>
    <message>
        <source>Enter the code from your authenticator app.</source>
        <translation>Geben Sie den Code aus Ihrer Authentifizierungs-App ein.</translation>
    </message>
</context>
<context>
    <name>tallyforge::SignedInRow</name>
    <message>
        <source>Sign out</source>
        <translation>Abmelden</translation>
    </message>
    <message>
        <source>Signed in as &lt;b&gt;%1&lt;/b&gt;</source>
        <translation>Angemeldet als &lt;b&gt;%1&lt;/b&gt;</translation>
    </message>
</context>
<context>
    <name>tallyforge::SourceManager</name>
    <message>
        <source>Connecting to %1…</source>
        <translation>Verbindung zu %1 wird hergestellt …</translation>
    </message>
    <message>
        <source>Connecting to %1 on your network…</source>
        <translation>Verbindung zu %1 in Ihrem Netzwerk wird hergestellt …</translation>
    </message>
    <message>
        <source>Connected to %1, waiting for scoreboard data…</source>
        <translation>Mit %1 verbunden, es wird auf Daten der Anzeigetafel gewartet …</translation>
    </message>
    <message>
        <source>Sign in to see live scores.</source>
        <translation>Melden Sie sich an, um Live-Spielstände zu sehen.</translation>
    </message>
    <message>
        <source>%1 has not sent any scoreboard data yet.</source>
        <translation>%1 hat noch keine Daten der Anzeigetafel gesendet.</translation>
    </message>
    <message>
        <source>Live from %1</source>
        <translation>Live von %1</translation>
    </message>
    <message>
        <source>%1 is offline. Showing its last scores.</source>
        <translation>%1 ist offline. Es werden die letzten Spielstände angezeigt.</translation>
    </message>
    <message>
        <source>Signed out. Sign in to see live scores.</source>
        <translation>Abgemeldet. Melden Sie sich an, um Live-Spielstände zu sehen.</translation>
    </message>
    <message>
        <source>Live from %1 over your network</source>
        <translation>Live von %1 über Ihr Netzwerk</translation>
    </message>
    <message>
        <source>Reconnecting to %1…</source>
        <translation>Verbindung zu %1 wird wiederhergestellt …</translation>
    </message>
    <message>
        <source>Lost the connection to %1</source>
        <translation>Die Verbindung zu %1 wurde unterbrochen</translation>
    </message>
    <message>
        <source>%1 is restarting. Reopen the setup window to reconnect.</source>
        <translation>%1 wird neu gestartet. Öffnen Sie das Einrichtungsfenster erneut, um die Verbindung wiederherzustellen.</translation>
    </message>
</context>
<context>
    <name>tallyforge::TlsFeed</name>
    <message>
        <source>The device rejected the connection.</source>
        <translation>Das Gerät hat die Verbindung abgelehnt.</translation>
    </message>
    <message>
        <source>The device rejected the connection. Re-run device setup to refresh its access.</source>
        <translation>Das Gerät hat die Verbindung abgelehnt. Führen Sie die Geräteeinrichtung erneut aus, um den Zugriff zu erneuern.</translation>
    </message>
    <message>
        <source>Could not reach the device on your network (%1).</source>
        <translation>Das Gerät ist in Ihrem Netzwerk nicht erreichbar (%1).</translation>
    </message>
    <message>
        <source>The device did not answer in time</source>
        <translation>Das Gerät hat nicht rechtzeitig geantwortet</translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdateBanner</name>
    <message>
        <source> OBS is streaming or recording right now, so wait until you are done.</source>
        <translation> Gerade läuft ein Stream oder eine Aufnahme; warten Sie mit dem Neustart, bis Sie fertig sind.</translation>
    </message>
    <message>
        <source>Restart OBS to finish updating to version %1.</source>
        <translation>Starten Sie OBS neu, um das Update auf Version %1 abzuschließen.</translation>
    </message>
    <message>
        <source>The update to version %1 did not finish.</source>
        <translation>Das Update auf Version %1 wurde nicht abgeschlossen.</translation>
    </message>
    <message>
        <source>Tallyforge %1 is available (you have %2).</source>
        <translation>Tallyforge %1 ist verfügbar (installiert ist %2).</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>Jetzt aktualisieren</translation>
    </message>
    <message>
        <source>Open the download page</source>
        <translation>Downloadseite öffnen</translation>
    </message>
    <message>
        <source>Progress of the update</source>
        <translation>Fortschritt des Updates</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdateFooter</name>
    <message>
        <source>Tallyforge plugin</source>
        <translation>Tallyforge-Plugin</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <translation>Nach Updates suchen</translation>
    </message>
    <message>
        <source>Check for updates automatically</source>
        <translation>Automatisch nach Updates suchen</translation>
    </message>
    <message>
        <source> Checked %1.</source>
        <translation> Geprüft: %1.</translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbAdminTransport</name>
    <message>
        <source>The USB device is not connected</source>
        <translation>Das USB-Gerät ist nicht verbunden</translation>
    </message>
    <message>
        <source>That request is too large for the device</source>
        <translation>Diese Anfrage ist zu groß für das Gerät</translation>
    </message>
    <message>
        <source>Could not write to the USB device</source>
        <translation>An das USB-Gerät konnte nicht gesendet werden</translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbLink</name>
    <message>
        <source>This USB port did not answer like a Tallyforge device. Check the cable and that the device has finished starting.</source>
        <translation>An diesem USB-Anschluss hat kein Tallyforge-Gerät geantwortet. Überprüfen Sie das Kabel und ob das Gerät fertig gestartet ist.</translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbRelays</name>
    <message>
        <source>wireless receiver</source>
        <translation>Funkempfänger</translation>
    </message>
    <message>
        <source>USB device</source>
        <translation>USB-Gerät</translation>
    </message>
    <message>
        <source>connected to the cloud through this computer</source>
        <translation>über diesen Computer mit der Cloud verbunden</translation>
    </message>
    <message>
        <source>cannot reach the cloud (%1)</source>
        <translation>die Cloud ist nicht erreichbar (%1)</translation>
    </message>
    <message>
        <source>ready, waiting for the device</source>
        <translation>bereit, es wird auf das Gerät gewartet</translation>
    </message>
    <message>
        <source>waiting for the paired device</source>
        <translation>es wird auf das gekoppelte Gerät gewartet</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
</TS>
