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
    <name>Carriers</name>
    <message>
        <source>Waiting for the device to answer. If it just powered on this can take up to a minute.</source>
        <translation>Es wird auf die Antwort des Geräts gewartet. Wenn es gerade erst eingeschaltet wurde, kann das bis zu einer Minute dauern.</translation>
    </message>
    <message>
        <source>Connecting over Bluetooth. If your computer asks for a passkey, enter the 6-digit number from the device&apos;s label.</source>
        <translation>Verbindung über Bluetooth wird hergestellt. Wenn Ihr Computer nach einem Kopplungscode fragt, geben Sie die 6-stellige Zahl vom Etikett des Geräts ein.</translation>
    </message>
    <message>
        <source>Contacting the device on your network…</source>
        <translation>Das Gerät wird in Ihrem Netzwerk angesprochen …</translation>
    </message>
    <message>
        <source>Bluetooth access was denied. Allow &quot;Tallyforge Bluetooth Helper&quot; in your system&apos;s Privacy &amp; Security → Bluetooth settings, then scan again.</source>
        <translation>Der Zugriff auf Bluetooth wurde verweigert. Erlauben Sie „Tallyforge Bluetooth Helper“ in den Systemeinstellungen unter Datenschutz &amp; Sicherheit → Bluetooth und suchen Sie dann erneut.</translation>
    </message>
    <message>
        <source>Bluetooth is turned off or unavailable on this computer.</source>
        <translation>Bluetooth ist auf diesem Computer ausgeschaltet oder nicht verfügbar.</translation>
    </message>
</context>
<context>
    <name>ControllerCatalog</name>
    <message>
        <source>Tallyforge wireless / ethernet bridge</source>
        <translation>Tallyforge-Brücke (Funk / Ethernet)</translation>
    </message>
    <message>
        <source>Current loop (CL)</source>
        <translation>Stromschleife (CL)</translation>
    </message>
    <message>
        <source>Wireless</source>
        <translation>Funk</translation>
    </message>
    <message>
        <source>NEVCO serial</source>
        <translation>NEVCO seriell</translation>
    </message>
    <message>
        <source>Ethernet bridge</source>
        <translation>Ethernet-Brücke</translation>
    </message>
    <message>
        <source>Wireless channel %1</source>
        <translation>Funkkanal %1</translation>
    </message>
</context>
<context>
    <name>NetworkTestText</name>
    <message>
        <source>Local network</source>
        <translation>Lokales Netzwerk</translation>
    </message>
    <message>
        <source>DNS</source>
        <translation>DNS</translation>
    </message>
    <message>
        <source>Cloud (secure port)</source>
        <translation>Cloud (sicherer Port)</translation>
    </message>
    <message>
        <source>Cloud (backup route)</source>
        <translation>Cloud (Ersatzweg)</translation>
    </message>
    <message>
        <source>Internet</source>
        <translation>Internet</translation>
    </message>
    <message>
        <source>End to end</source>
        <translation>Ende zu Ende</translation>
    </message>
    <message>
        <source>Still running…</source>
        <translation>Läuft noch …</translation>
    </message>
    <message>
        <source>All checks passed.</source>
        <translation>Alle Prüfungen bestanden.</translation>
    </message>
    <message>
        <source>Some checks failed.</source>
        <translation>Einige Prüfungen sind fehlgeschlagen.</translation>
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
    <name>StatusText</name>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>Device ID</source>
        <translation>Gerätekennung</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Wi-Fi address</source>
        <translation>WLAN-Adresse</translation>
    </message>
    <message>
        <source>Wi-Fi network</source>
        <translation>WLAN-Netzwerk</translation>
    </message>
    <message>
        <source>Wi-Fi status</source>
        <translation>WLAN-Zustand</translation>
    </message>
    <message>
        <source>Wi-Fi signal (dBm)</source>
        <translation>WLAN-Signal (dBm)</translation>
    </message>
    <message>
        <source>Ethernet address</source>
        <translation>Ethernet-Adresse</translation>
    </message>
    <message>
        <source>Cloud connected</source>
        <translation>Mit der Cloud verbunden</translation>
    </message>
    <message>
        <source>Cloud route</source>
        <translation>Weg zur Cloud</translation>
    </message>
    <message>
        <source>TCP clients</source>
        <translation>TCP-Clients</translation>
    </message>
    <message>
        <source>Last restart</source>
        <translation>Letzter Neustart</translation>
    </message>
    <message>
        <source>Uptime (s)</source>
        <translation>Laufzeit (s)</translation>
    </message>
    <message>
        <source>TLS fingerprint</source>
        <translation>TLS-Fingerabdruck</translation>
    </message>
    <message>
        <source>Password change needed</source>
        <translation>Passwortwechsel nötig</translation>
    </message>
    <message>
        <source>Sport: %1</source>
        <translation>Sportart: %1</translation>
    </message>
    <message>
        <source>No scoreboard data yet.</source>
        <translation>Noch keine Daten der Anzeigetafel.</translation>
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
    <name>tallyforge::AdvancedPanel</name>
    <message>
        <source>Restart device</source>
        <translation>Gerät neu starten</translation>
    </message>
    <message>
        <source>Show device log</source>
        <translation>Geräteprotokoll anzeigen</translation>
    </message>
    <message>
        <source>Device log</source>
        <translation>Geräteprotokoll</translation>
    </message>
    <message>
        <source>Danger zone</source>
        <translation>Gefahrenbereich</translation>
    </message>
    <message>
        <source>Reset admin password to the factory password…</source>
        <translation>Administratorpasswort auf das Werkspasswort zurücksetzen …</translation>
    </message>
    <message>
        <source>Factory reset…</source>
        <translation>Auf Werkseinstellungen zurücksetzen …</translation>
    </message>
    <message>
        <source>Restart the device now? Live scores pause for about a minute.</source>
        <translation>Das Gerät jetzt neu starten? Die Spielstände setzen etwa eine Minute lang aus.</translation>
    </message>
    <message>
        <source>Restarting…</source>
        <translation>Das Gerät startet neu …</translation>
    </message>
    <message>
        <source>Reading the log…</source>
        <translation>Das Protokoll wird gelesen …</translation>
    </message>
    <message>
        <source>Reset admin password</source>
        <translation>Administratorpasswort zurücksetzen</translation>
    </message>
    <message>
        <source>Set the admin password back to the factory password? You will be asked to choose a new one next time.</source>
        <translation>Das Administratorpasswort auf das Werkspasswort zurücksetzen? Beim nächsten Mal werden Sie aufgefordert, ein neues zu wählen.</translation>
    </message>
    <message>
        <source>Password reset.</source>
        <translation>Das Passwort ist zurückgesetzt.</translation>
    </message>
    <message>
        <source>Factory reset</source>
        <translation>Auf Werkseinstellungen zurücksetzen</translation>
    </message>
    <message>
        <source>This erases every setting on the device, including Wi-Fi and its cloud sign-in.

Type RESET to continue.</source>
        <translation>Dies löscht alle Einstellungen des Geräts, auch WLAN und Cloud-Anmeldung.

Geben Sie RESET ein, um fortzufahren.</translation>
    </message>
    <message>
        <source>The device is resetting.</source>
        <translation>Das Gerät wird zurückgesetzt.</translation>
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
    <name>tallyforge::CloudPanel</name>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Forget cloud sign-in on this device…</source>
        <translation>Cloud-Anmeldung auf diesem Gerät löschen …</translation>
    </message>
    <message>
        <source>Device ID</source>
        <translation>Gerätekennung</translation>
    </message>
    <message>
        <source>Identifies this device in your Tallyforge account. Only change it if instructed by support.</source>
        <translation>Daran erkennt Ihr Tallyforge-Konto dieses Gerät. Ändern Sie sie nur, wenn der Support Sie dazu auffordert.</translation>
    </message>
    <message>
        <source>Device ID, e.g. tallyforge0029</source>
        <translation>Gerätekennung, z. B. tallyforge0029</translation>
    </message>
    <message>
        <source>Save device ID</source>
        <translation>Gerätekennung speichern</translation>
    </message>
    <message>
        <source>Connected to the cloud: %1</source>
        <translation>Mit der Cloud verbunden: %1</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>Route: %1</source>
        <translation>Weg: %1</translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation>Gespeichert.</translation>
    </message>
    <message>
        <source>Done. The device no longer has cloud credentials.</source>
        <translation>Fertig. Das Gerät hat keine Cloud-Anmeldung mehr.</translation>
    </message>
    <message>
        <source>Forget cloud sign-in</source>
        <translation>Cloud-Anmeldung löschen</translation>
    </message>
    <message>
        <source>The device stops sending scores to the cloud until it is set up for it again. Continue?</source>
        <translation>Das Gerät sendet keine Spielstände mehr an die Cloud, bis es wieder dafür eingerichtet wird. Fortfahren?</translation>
    </message>
</context>
<context>
    <name>tallyforge::Completion</name>
    <message>
        <source>Device: %1</source>
        <translation>Gerät: %1</translation>
    </message>
    <message>
        <source>Firmware: %1</source>
        <translation>Firmware: %1</translation>
    </message>
    <message>
        <source>Wi-Fi: not connected</source>
        <translation>WLAN: nicht verbunden</translation>
    </message>
    <message>
        <source>Wi-Fi: connected (%1)</source>
        <translation>WLAN: verbunden (%1)</translation>
    </message>
</context>
<context>
    <name>tallyforge::ConnectPage</name>
    <message>
        <source>Connect to your device</source>
        <translation>Mit Ihrem Gerät verbinden</translation>
    </message>
    <message>
        <source>You do not need a Tallyforge account for this. Connect with a USB cable, Bluetooth, or over your local network.</source>
        <translation>Sie brauchen dafür kein Tallyforge-Konto. Verbinden Sie sich über ein USB-Kabel, über Bluetooth oder über Ihr lokales Netzwerk.</translation>
    </message>
    <message>
        <source>USB cable</source>
        <translation>USB-Kabel</translation>
    </message>
    <message>
        <source>Bluetooth</source>
        <translation>Bluetooth</translation>
    </message>
    <message>
        <source>Local network</source>
        <translation>Lokales Netzwerk</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Device number or address, e.g. 0029 or 192.168.1.20</source>
        <translation>Gerätenummer oder Adresse, z. B. 0029 oder 192.168.1.20</translation>
    </message>
    <message>
        <source>Scan again</source>
        <translation>Erneut suchen</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Type the device&apos;s number (the last digits of its name) or its network address. This computer and the device must be on the same network.</source>
        <translation>Geben Sie die Nummer des Geräts (die letzten Ziffern seines Namens) oder seine Netzwerkadresse ein. Dieser Computer und das Gerät müssen im selben Netzwerk sein.</translation>
    </message>
    <message>
        <source>The admin password is sent over your local network without encryption. Use USB when you can.</source>
        <translation>Das Administratorpasswort wird unverschlüsselt über Ihr lokales Netzwerk gesendet. Verwenden Sie nach Möglichkeit USB.</translation>
    </message>
    <message>
        <source>Use the USB port on the device (or on the wireless receiver). Close any serial monitor first.</source>
        <translation>Verwenden Sie den USB-Anschluss des Geräts (oder des Funkempfängers). Schließen Sie vorher Programme, die den seriellen Anschluss benutzen.</translation>
    </message>
    <message>
        <source>%1  – likely a Tallyforge device</source>
        <translation>%1  – wahrscheinlich ein Tallyforge-Gerät</translation>
    </message>
    <message>
        <source>No USB devices found. Plug the device in and press Scan again.</source>
        <translation>Keine USB-Geräte gefunden. Schließen Sie das Gerät an und drücken Sie „Erneut suchen“.</translation>
    </message>
    <message>
        <source>%1 USB port(s) found. Pick the Tallyforge device.</source>
        <translation>%1 USB-Anschlüsse gefunden. Wählen Sie das Tallyforge-Gerät.</translation>
    </message>
    <message>
        <source>The device must be paired with this computer first. The 6-digit passkey is on the device&apos;s label and in your Tallyforge account.</source>
        <translation>Das Gerät muss zuerst mit diesem Computer gekoppelt werden. Der 6-stellige Kopplungscode steht auf dem Etikett des Geräts und in Ihrem Tallyforge-Konto.</translation>
    </message>
    <message>
        <source>Looking for devices… (about 6 seconds)</source>
        <translation>Es wird nach Geräten gesucht … (etwa 6 Sekunden)</translation>
    </message>
    <message>
        <source>%1 device(s) found.</source>
        <translation>Gefundene Geräte: %1.</translation>
    </message>
    <message>
        <source>No Bluetooth devices were seen at all. Check that Bluetooth is on.</source>
        <translation>Es wurden überhaupt keine Bluetooth-Geräte gefunden. Prüfen Sie, ob Bluetooth eingeschaltet ist.</translation>
    </message>
    <message>
        <source>Bluetooth is working but no Tallyforge device is in range. Move closer and scan again.</source>
        <translation>Bluetooth funktioniert, aber es ist kein Tallyforge-Gerät in Reichweite. Gehen Sie näher heran und suchen Sie erneut.</translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerGroup</name>
    <message>
        <source>Scoreboard</source>
        <translation>Anzeigetafel</translation>
    </message>
    <message>
        <source>Maker</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sportart</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Anschluss</translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerPage</name>
    <message>
        <source>Choose the scoreboard</source>
        <translation>Anzeigetafel wählen</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Überspringen</translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerPanel</name>
    <message>
        <source>Pick the scoreboard this device is connected to. Each choice narrows the next.</source>
        <translation>Wählen Sie die Anzeigetafel, an die dieses Gerät angeschlossen ist. Jede Auswahl grenzt die nächste ein.</translation>
    </message>
    <message>
        <source>Manufacturer</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sportart</translation>
    </message>
    <message>
        <source>Input type</source>
        <translation>Eingangsart</translation>
    </message>
    <message>
        <source>Save scoreboard</source>
        <translation>Anzeigetafel speichern</translation>
    </message>
    <message>
        <source>Loading the list…</source>
        <translation>Die Liste wird geladen …</translation>
    </message>
    <message>
        <source>The device did not list its scoreboards.</source>
        <translation>Das Gerät hat keine Anzeigetafeln aufgeführt.</translation>
    </message>
    <message>
        <source>Currently set to this scoreboard.</source>
        <translation>Zurzeit ist diese Anzeigetafel eingestellt.</translation>
    </message>
    <message>
        <source>Choose the manufacturer, model, sport and input type first.</source>
        <translation>Wählen Sie zuerst Hersteller, Modell, Sportart und Eingangsart.</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Wird gespeichert …</translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation>Gespeichert.</translation>
    </message>
</context>
<context>
    <name>tallyforge::DeviceManager</name>
    <message>
        <source>Device settings and tools</source>
        <translation>Einstellungen und Werkzeuge des Geräts</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Updates</translation>
    </message>
    <message>
        <source>Cloud</source>
        <translation>Cloud</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Extras</translation>
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
    <name>tallyforge::DonePage</name>
    <message>
        <source>All set</source>
        <translation>Alles bereit</translation>
    </message>
    <message>
        <source>Use this device&apos;s live scores in OBS</source>
        <translation>Live-Spielstände dieses Geräts in OBS verwenden</translation>
    </message>
    <message>
        <source>More settings and tools…</source>
        <translation>Weitere Einstellungen und Werkzeuge …</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Claim code from the device&apos;s box or account email</source>
        <translation>Anmeldecode von der Verpackung des Geräts oder aus der Konto-E-Mail</translation>
    </message>
    <message>
        <source>Add this device to my account</source>
        <translation>Dieses Gerät zu meinem Konto hinzufügen</translation>
    </message>
    <message>
        <source>Added to your account.</source>
        <translation>Zu Ihrem Konto hinzugefügt.</translation>
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
    <name>tallyforge::ManageDialog</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The device answered.</source>
        <translation>Das Gerät hat geantwortet.</translation>
    </message>
    <message>
        <source>Manage %1</source>
        <translation>%1 verwalten</translation>
    </message>
    <message>
        <source>These actions reach the device through your Tallyforge account, so it must be online.</source>
        <translation>Diese Aktionen erreichen das Gerät über Ihr Tallyforge-Konto, also muss es online sein.</translation>
    </message>
    <message>
        <source>Check device status</source>
        <translation>Gerätestatus abfragen</translation>
    </message>
    <message>
        <source>The device&apos;s answer</source>
        <translation>Antwort des Geräts</translation>
    </message>
    <message>
        <source>Scoreboard</source>
        <translation>Anzeigetafel</translation>
    </message>
    <message>
        <source>Change scoreboard</source>
        <translation>Anzeigetafel ändern</translation>
    </message>
    <message>
        <source>Check for update</source>
        <translation>Nach Update suchen</translation>
    </message>
    <message>
        <source>Restart device</source>
        <translation>Gerät neu starten</translation>
    </message>
    <message>
        <source>Asking the device…</source>
        <translation>Das Gerät wird gefragt …</translation>
    </message>
    <message>
        <source>Status received.</source>
        <translation>Status erhalten.</translation>
    </message>
    <message>
        <source>Sending to the device…</source>
        <translation>Wird an das Gerät gesendet …</translation>
    </message>
    <message>
        <source>The device accepted the new scoreboard.</source>
        <translation>Das Gerät hat die neue Anzeigetafel übernommen.</translation>
    </message>
    <message>
        <source>Checking for a firmware update…</source>
        <translation>Es wird nach einem Firmware-Update gesucht …</translation>
    </message>
    <message>
        <source>Update check finished.</source>
        <translation>Die Suche nach einem Update ist beendet.</translation>
    </message>
    <message>
        <source>Restart %1 now? Live scores pause for about a minute.</source>
        <translation>%1 jetzt neu starten? Die Spielstände setzen etwa eine Minute lang aus.</translation>
    </message>
    <message>
        <source>Restarting…</source>
        <translation>Das Gerät startet neu …</translation>
    </message>
    <message>
        <source>The device is offline; it will restart when it reconnects.</source>
        <translation>Das Gerät ist offline; es startet neu, sobald es wieder verbunden ist.</translation>
    </message>
    <message>
        <source>Restart sent.</source>
        <translation>Der Neustart ist gesendet.</translation>
    </message>
</context>
<context>
    <name>tallyforge::ManagerPage</name>
    <message>
        <source>Use live scores in OBS</source>
        <translation>Live-Spielstände in OBS verwenden</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
</context>
<context>
    <name>tallyforge::NetworkForm</name>
    <message>
        <source>Wi-Fi password</source>
        <translation>WLAN-Passwort</translation>
    </message>
    <message>
        <source>Scan for networks</source>
        <translation>Nach Netzwerken suchen</translation>
    </message>
    <message>
        <source>Connect to this network</source>
        <translation>Mit diesem Netzwerk verbinden</translation>
    </message>
    <message>
        <source>Network name</source>
        <translation>Netzwerkname</translation>
    </message>
    <message>
        <source>Pick the venue&apos;s network. The device uses it to reach your account and the internet.</source>
        <translation>Wählen Sie das Netzwerk des Veranstaltungsorts. Das Gerät erreicht darüber Ihr Konto und das Internet.</translation>
    </message>
    <message>
        <source>%1   (%2 dBm)</source>
        <translation>%1   (%2 dBm)</translation>
    </message>
</context>
<context>
    <name>tallyforge::PanelBase</name>
    <message>
        <source>Not connected to a device.</source>
        <translation>Mit keinem Gerät verbunden.</translation>
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
    <name>tallyforge::ReceiverPage</name>
    <message>
        <source>Wireless receiver</source>
        <translation>Funkempfänger</translation>
    </message>
    <message>
        <source>Set up or manage the paired Tallyforge device through this receiver…</source>
        <translation>Das gekoppelte Tallyforge-Gerät über diesen Empfänger einrichten oder verwalten …</translation>
    </message>
    <message>
        <source>Use this receiver&apos;s live scores in OBS</source>
        <translation>Live-Spielstände dieses Empfängers in OBS verwenden</translation>
    </message>
    <message>
        <source>Make a new pairing key</source>
        <translation>Neuen Kopplungsschlüssel erzeugen</translation>
    </message>
    <message>
        <source>…or enter an existing 32-character key</source>
        <translation>… oder einen vorhandenen Schlüssel mit 32 Zeichen eingeben</translation>
    </message>
    <message>
        <source>Use this key</source>
        <translation>Diesen Schlüssel verwenden</translation>
    </message>
    <message>
        <source>Paired with a device.</source>
        <translation>Mit einem Gerät gekoppelt.</translation>
    </message>
    <message>
        <source>Not paired yet.</source>
        <translation>Noch nicht gekoppelt.</translation>
    </message>
    <message>
        <source>Receiving from the device now.</source>
        <translation>Das Gerät wird gerade empfangen.</translation>
    </message>
    <message>
        <source>Not hearing the device right now.</source>
        <translation>Das Gerät ist gerade nicht zu hören.</translation>
    </message>
    <message>
        <source>Signal: %1 dBm</source>
        <translation>Signal: %1 dBm</translation>
    </message>
    <message>
        <source>Channel: %1</source>
        <translation>Kanal: %1</translation>
    </message>
    <message>
        <source>Firmware: %1</source>
        <translation>Firmware: %1</translation>
    </message>
    <message>
        <source>Sending to the receiver…</source>
        <translation>Wird an den Empfänger gesendet …</translation>
    </message>
    <message>
        <source>Saved. The receiver restarts to apply it.</source>
        <translation>Gespeichert. Der Empfänger startet neu, um es zu übernehmen.</translation>
    </message>
    <message>
        <source>New pairing key (write this down and enter it on the sending device):
%1</source>
        <translation>Neuer Kopplungsschlüssel (schreiben Sie ihn auf und geben Sie ihn am sendenden Gerät ein):
%1</translation>
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
    <name>tallyforge::RestartBanner</name>
    <message>
        <source>Wait %1 seconds, then close this window and reopen it to reconnect to the device.</source>
        <translation>Warten Sie %1 Sekunden, schließen Sie dann dieses Fenster und öffnen Sie es erneut, um sich wieder mit dem Gerät zu verbinden.</translation>
    </message>
    <message>
        <source>The device should be back.</source>
        <translation>Das Gerät sollte wieder da sein.</translation>
    </message>
    <message>
        <source>Close this window and reopen it to reconnect to the device.</source>
        <translation>Schließen Sie dieses Fenster und öffnen Sie es erneut, um sich wieder mit dem Gerät zu verbinden.</translation>
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
    <name>tallyforge::ScoreboardForm</name>
    <message>
        <source>Manufacturer</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sportart</translation>
    </message>
    <message>
        <source>Input type</source>
        <translation>Eingangsart</translation>
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
    <name>tallyforge::SecurityPanel</name>
    <message>
        <source>Network access</source>
        <translation>Netzwerkzugriff</translation>
    </message>
    <message>
        <source>Other programs can read this device&apos;s live scores over the network with an access token.</source>
        <translation>Andere Programme können die Spielstände dieses Geräts mit einem Zugriffstoken über das Netzwerk lesen.</translation>
    </message>
    <message>
        <source>Security fingerprint</source>
        <translation>Sicherheits-Fingerabdruck</translation>
    </message>
    <message>
        <source>Security fingerprint (SHA-256)</source>
        <translation>Sicherheits-Fingerabdruck (SHA-256)</translation>
    </message>
    <message>
        <source>Access token</source>
        <translation>Zugriffstoken</translation>
    </message>
    <message>
        <source>Make a new access token</source>
        <translation>Neues Zugriffstoken erzeugen</translation>
    </message>
    <message>
        <source>Copy token</source>
        <translation>Token kopieren</translation>
    </message>
    <message>
        <source>Bluetooth pairing</source>
        <translation>Bluetooth-Kopplung</translation>
    </message>
    <message>
        <source>The passkey this computer or phone enters the first time it pairs over Bluetooth. It is only shown over a cable or the network.</source>
        <translation>Diesen Kopplungscode geben Sie auf dem Computer oder Telefon ein, wenn er sich zum ersten Mal über Bluetooth koppelt. Er wird nur über ein Kabel oder das Netzwerk angezeigt.</translation>
    </message>
    <message>
        <source>6-digit passkey</source>
        <translation>6-stelliger Kopplungscode</translation>
    </message>
    <message>
        <source>Show pairing passkey</source>
        <translation>Kopplungscode anzeigen</translation>
    </message>
    <message>
        <source>Admin password</source>
        <translation>Administratorpasswort</translation>
    </message>
    <message>
        <source>Current password</source>
        <translation>Aktuelles Passwort</translation>
    </message>
    <message>
        <source>New password (at least 8 characters)</source>
        <translation>Neues Passwort (mindestens 8 Zeichen)</translation>
    </message>
    <message>
        <source>New password again</source>
        <translation>Neues Passwort wiederholen</translation>
    </message>
    <message>
        <source>Change password</source>
        <translation>Passwort ändern</translation>
    </message>
    <message>
        <source>Set – make a new token to see one</source>
        <translation>Vorhanden – erzeugen Sie ein neues Token, um eines zu sehen</translation>
    </message>
    <message>
        <source>The device did not return a token.</source>
        <translation>Das Gerät hat kein Token geliefert.</translation>
    </message>
    <message>
        <source>Copy the token now – it is not shown again.</source>
        <translation>Kopieren Sie das Token jetzt – es wird nicht noch einmal angezeigt.</translation>
    </message>
    <message>
        <source>New access token</source>
        <translation>Neues Zugriffstoken</translation>
    </message>
    <message>
        <source>Make a new access token? Anything using the old one will stop working until you update it.</source>
        <translation>Ein neues Zugriffstoken erzeugen? Alles, was das alte benutzt, funktioniert erst wieder, wenn Sie es dort ersetzen.</translation>
    </message>
    <message>
        <source>The device did not return a passkey.</source>
        <translation>Das Gerät hat keinen Kopplungscode geliefert.</translation>
    </message>
    <message>
        <source>Fill in the current and new password.</source>
        <translation>Geben Sie das aktuelle und das neue Passwort ein.</translation>
    </message>
    <message>
        <source>The two new passwords do not match.</source>
        <translation>Die beiden neuen Passwörter stimmen nicht überein.</translation>
    </message>
    <message>
        <source>Use at least 8 characters, and not the factory password.</source>
        <translation>Verwenden Sie mindestens 8 Zeichen und nicht das Werkspasswort.</translation>
    </message>
    <message>
        <source>Password changed.</source>
        <translation>Das Passwort ist geändert.</translation>
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
    <name>tallyforge::SettingsPanel</name>
    <message>
        <source>Save settings</source>
        <translation>Einstellungen speichern</translation>
    </message>
    <message>
        <source>Connections</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>Allow scoreboard changes over the network (controller config API)</source>
        <translation>Wechsel der Anzeigetafel über das Netzwerk erlauben (Controller-Config-API)</translation>
    </message>
    <message>
        <source>Send live scores over the network (secure TCP, port 1010)</source>
        <translation>Spielstände über das Netzwerk senden (sicheres TCP, Port 1010)</translation>
    </message>
    <message>
        <source>Send test data to the cloud</source>
        <translation>Testdaten an die Cloud senden</translation>
    </message>
    <message>
        <source>Wireless output (send scores to a receiver)</source>
        <translation>Funkausgang (Spielstände an einen Empfänger senden)</translation>
    </message>
    <message>
        <source>Network ID (1-20)</source>
        <translation>Netzwerk-ID (1-20)</translation>
    </message>
    <message>
        <source>Channel (1-10)</source>
        <translation>Kanal (1-10)</translation>
    </message>
    <message>
        <source>Ethernet bridge output (send scores to a wired receiver)</source>
        <translation>Ethernet-Bridge-Ausgang (Spielstände an einen Empfänger am Kabel senden)</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>receiver address, e.g. tallyforge0042.local</source>
        <translation>Adresse des Empfängers, z. B. tallyforge0042.local</translation>
    </message>
    <message>
        <source>TCP port</source>
        <translation>TCP-Port</translation>
    </message>
    <message>
        <source>Cloud over USB (use this computer&apos;s internet)</source>
        <translation>Cloud über USB (Internet dieses Computers benutzen)</translation>
    </message>
    <message>
        <source>Local port</source>
        <translation>Lokaler Port</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Wird geladen …</translation>
    </message>
    <message>
        <source>The device did not list its controllers; scoreboard choices are unavailable.</source>
        <translation>Das Gerät hat seine Anzeigetafeln nicht aufgelistet; die Auswahl ist nicht verfügbar.</translation>
    </message>
    <message>
        <source>Choose the scoreboard&apos;s maker, model, sport and connection first.</source>
        <translation>Wählen Sie zuerst Hersteller, Modell, Sportart und Anschluss der Anzeigetafel.</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Wird gespeichert …</translation>
    </message>
    <message>
        <source>Saved. The device is switching to the new settings.</source>
        <translation>Gespeichert. Das Gerät stellt auf die neuen Einstellungen um.</translation>
    </message>
</context>
<context>
    <name>tallyforge::SetupDialog</name>
    <message>
        <source>Connecting to %1</source>
        <translation>Verbindung mit %1 wird hergestellt</translation>
    </message>
    <message>
        <source>Could not connect</source>
        <translation>Verbindung nicht möglich</translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>The connection to the device was lost. Check the cable, Bluetooth or network and try again.</source>
        <translation>Die Verbindung zum Gerät ist abgebrochen. Prüfen Sie Kabel, Bluetooth oder Netzwerk und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Signing in with the password saved on your account…</source>
        <translation>Anmeldung mit dem in Ihrem Konto gespeicherten Passwort …</translation>
    </message>
    <message>
        <source>Signing in…</source>
        <translation>Anmeldung läuft …</translation>
    </message>
    <message>
        <source>Saving the new password…</source>
        <translation>Das neue Passwort wird gespeichert …</translation>
    </message>
    <message>
        <source>Connecting to the paired device through the receiver</source>
        <translation>Verbindung mit dem gekoppelten Gerät über den Empfänger wird hergestellt</translation>
    </message>
    <message>
        <source>Asking the device over the wireless link. This can take up to a minute.</source>
        <translation>Das Gerät wird über die Funkverbindung gefragt. Das kann bis zu einer Minute dauern.</translation>
    </message>
    <message>
        <source>Set up or manage a Tallyforge device</source>
        <translation>Ein Tallyforge-Gerät einrichten oder verwalten</translation>
    </message>
    <message>
        <source>wireless receiver</source>
        <translation>Funkempfänger</translation>
    </message>
</context>
<context>
    <name>tallyforge::SharePanel</name>
    <message>
        <source>Sharing is off, so the device cannot reach the cloud over this cable.</source>
        <translation>Die Freigabe ist aus, daher kann das Gerät die Cloud über dieses Kabel nicht erreichen.</translation>
    </message>
    <message>
        <source>Waiting for the paired device to ask for the cloud. This starts once the device is linked to the receiver and has its cloud sign-in.</source>
        <translation>Es wird darauf gewartet, dass das gekoppelte Gerät die Cloud anfordert. Das beginnt, sobald das Gerät mit dem Empfänger verbunden ist und seine Cloud-Anmeldung hat.</translation>
    </message>
    <message>
        <source>The device is not asking for a cloud connection over USB. Turn on &quot;Cloud over USB&quot; in this device&apos;s Settings tab (the device also needs its cloud sign-in).</source>
        <translation>Das Gerät fordert keine Cloud-Verbindung über USB an. Schalten Sie „Cloud über USB“ in den Einstellungen dieses Geräts ein (das Gerät braucht auch seine Cloud-Anmeldung).</translation>
    </message>
    <message>
        <source>Connected to the cloud through this computer.  Sent %1, received %2.</source>
        <translation>Über diesen Computer mit der Cloud verbunden.  Gesendet: %1, empfangen: %2.</translation>
    </message>
    <message>
        <source>This computer could not reach the cloud (%1). Check its internet connection.</source>
        <translation>Dieser Computer konnte die Cloud nicht erreichen (%1). Prüfen Sie seine Internetverbindung.</translation>
    </message>
    <message>
        <source>Ready. This computer connects to %1 as soon as the device asks.</source>
        <translation>Bereit. Dieser Computer verbindet sich mit %1, sobald das Gerät es anfordert.</translation>
    </message>
    <message>
        <source>Only the live-score cloud link travels over the cable. This device downloads firmware itself, so it needs Wi-Fi or Ethernet for updates (or update its firmware over Wi-Fi once).</source>
        <translation>Nur die Cloud-Verbindung für Live-Spielstände läuft über das Kabel. Dieses Gerät lädt Firmware selbst herunter und braucht daher für Updates WLAN oder Ethernet (oder aktualisieren Sie seine Firmware einmal über WLAN).</translation>
    </message>
    <message>
        <source> (downloading now: %1 received)</source>
        <translation> (Download läuft: %1 empfangen)</translation>
    </message>
    <message>
        <source>Firmware updates for a device with no Wi-Fi or Ethernet also download through this computer%1.</source>
        <translation>Auch Firmware-Updates für ein Gerät ohne WLAN oder Ethernet werden über diesen Computer heruntergeladen%1.</translation>
    </message>
    <message>
        <source>Share this computer&apos;s internet connection</source>
        <translation>Internetverbindung dieses Computers freigeben</translation>
    </message>
    <message>
        <source>Let the device reach the Tallyforge cloud through this computer</source>
        <translation>Das Gerät darf die Tallyforge-Cloud über diesen Computer erreichen</translation>
    </message>
    <message>
        <source>%1 B</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
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
    <name>tallyforge::SignInPage</name>
    <message>
        <source>Connecting…</source>
        <translation>Verbindung wird hergestellt …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Enter this device&apos;s admin password. The factory password did not work.</source>
        <translation>Geben Sie das Administratorpasswort dieses Geräts ein. Das Werkspasswort hat nicht funktioniert.</translation>
    </message>
    <message>
        <source>Device admin password</source>
        <translation>Administratorpasswort des Geräts</translation>
    </message>
    <message>
        <source>Sign in to device</source>
        <translation>Am Gerät anmelden</translation>
    </message>
    <message>
        <source>This device still has its factory password. Choose a new admin password (at least 8 characters).</source>
        <translation>Dieses Gerät hat noch sein Werkspasswort. Wählen Sie ein neues Administratorpasswort (mindestens 8 Zeichen).</translation>
    </message>
    <message>
        <source>New admin password</source>
        <translation>Neues Administratorpasswort</translation>
    </message>
    <message>
        <source>Type it again</source>
        <translation>Noch einmal eingeben</translation>
    </message>
    <message>
        <source>Set password</source>
        <translation>Passwort festlegen</translation>
    </message>
    <message>
        <source>Device password needed</source>
        <translation>Gerätepasswort nötig</translation>
    </message>
    <message>
        <source>Choose a new device password</source>
        <translation>Wählen Sie ein neues Gerätepasswort</translation>
    </message>
    <message>
        <source>Use at least 8 characters, and not the factory password.</source>
        <translation>Verwenden Sie mindestens 8 Zeichen und nicht das Werkspasswort.</translation>
    </message>
    <message>
        <source>The two passwords do not match.</source>
        <translation>Die beiden Passwörter stimmen nicht überein.</translation>
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
        <source>Disconnected from %1. Its scores have stopped.</source>
        <translation>Von %1 getrennt. Die Spielstände dieses Geräts kommen nicht mehr an.</translation>
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
    <name>tallyforge::StatusPanel</name>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Scoreboard right now</source>
        <translation>Anzeigetafel im Moment</translation>
    </message>
    <message>
        <source>Network test</source>
        <translation>Netzwerktest</translation>
    </message>
    <message>
        <source>Checks the device&apos;s local network, internet and cloud connection. Takes about 15 seconds.</source>
        <translation>Prüft das lokale Netzwerk, die Internet- und die Cloud-Verbindung des Geräts. Dauert etwa 15 Sekunden.</translation>
    </message>
    <message>
        <source>Run network test</source>
        <translation>Netzwerktest starten</translation>
    </message>
    <message>
        <source>Running…</source>
        <translation>Läuft …</translation>
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
    <name>tallyforge::UpdateGroup</name>
    <message>
        <source>Running: %1</source>
        <translation>Installiert: %1</translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdatesPanel</name>
    <message>
        <source>Update failed: %1</source>
        <translation>Update fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>Device firmware</source>
        <translation>Geräte-Firmware</translation>
    </message>
    <message>
        <source>Check for update</source>
        <translation>Nach Update suchen</translation>
    </message>
    <message>
        <source>Install update and restart</source>
        <translation>Update installieren und neu starten</translation>
    </message>
    <message>
        <source>Lost contact with the device while it updates (it is probably restarting). Reconnect in a minute.</source>
        <translation>Der Kontakt zum Gerät ist während des Updates abgerissen (es startet wahrscheinlich neu). Verbinden Sie sich in einer Minute neu.</translation>
    </message>
    <message>
        <source>Wireless chip (ESP32-C6)</source>
        <translation>Funkchip (ESP32-C6)</translation>
    </message>
    <message>
        <source>Update wireless chip and restart</source>
        <translation>Funkchip aktualisieren und neu starten</translation>
    </message>
    <message>
        <source>Lost contact with the device (it may be restarting).</source>
        <translation>Der Kontakt zum Gerät ist abgerissen (es startet vielleicht neu).</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Es wird gesucht …</translation>
    </message>
    <message>
        <source>Error: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>Version %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Up to date.</source>
        <translation>Auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>the latest firmware</source>
        <translation>die neueste Firmware</translation>
    </message>
    <message>
        <source>version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Install update</source>
        <translation>Update installieren</translation>
    </message>
    <message>
        <source>Install %1 and restart the device now?</source>
        <translation>%1 jetzt installieren und das Gerät neu starten?</translation>
    </message>
    <message>
        <source>Starting the update…</source>
        <translation>Das Update wird gestartet …</translation>
    </message>
    <message>
        <source>Downloading… %1%</source>
        <translation>Wird heruntergeladen … %1 %</translation>
    </message>
    <message>
        <source>Verifying and applying the update…</source>
        <translation>Das Update wird geprüft und installiert …</translation>
    </message>
    <message>
        <source>Update applied. The device is restarting – reconnect in a minute.</source>
        <translation>Das Update ist installiert. Das Gerät startet neu – verbinden Sie sich in einer Minute neu.</translation>
    </message>
    <message>
        <source>Update wireless chip</source>
        <translation>Funkchip aktualisieren</translation>
    </message>
    <message>
        <source>Update the wireless chip from the staged image and restart the device?</source>
        <translation>Den Funkchip aus dem bereitliegenden Abbild aktualisieren und das Gerät neu starten?</translation>
    </message>
    <message>
        <source>Finished. The device may restart.</source>
        <translation>Fertig. Das Gerät startet vielleicht neu.</translation>
    </message>
    <message>
        <source>Working… (%1)</source>
        <translation>In Arbeit … (%1)</translation>
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
<context>
    <name>tallyforge::WifiPage</name>
    <message>
        <source>Connect the device to Wi-Fi</source>
        <translation>Das Gerät mit WLAN verbinden</translation>
    </message>
    <message>
        <source>Skip – use this computer&apos;s internet over USB, or the device already has Wi-Fi</source>
        <translation>Überspringen – Internet dieses Computers über USB nutzen, oder das Gerät hat schon WLAN</translation>
    </message>
</context>
<context>
    <name>tallyforge::WifiPanel</name>
    <message>
        <source>Scanning… this can take up to 15 seconds.</source>
        <translation>Suche läuft … das kann bis zu 15 Sekunden dauern.</translation>
    </message>
    <message>
        <source>You can still type the network name.</source>
        <translation>Sie können den Netzwerknamen trotzdem eingeben.</translation>
    </message>
    <message>
        <source>%1 network(s) found.</source>
        <translation>Gefundene Netzwerke: %1.</translation>
    </message>
    <message>
        <source>No networks found. Move the device closer to the router, or type the network name.</source>
        <translation>Keine Netzwerke gefunden. Stellen Sie das Gerät näher an den Router oder geben Sie den Netzwerknamen ein.</translation>
    </message>
    <message>
        <source>Choose or type a network name first.</source>
        <translation>Wählen Sie zuerst ein Netzwerk oder geben Sie seinen Namen ein.</translation>
    </message>
    <message>
        <source>Sending the network to the device…</source>
        <translation>Das Netzwerk wird an das Gerät gesendet …</translation>
    </message>
    <message>
        <source>Enter the receiver&apos;s address first. It is printed on the receiver.</source>
        <translation>Geben Sie zuerst die Adresse des Empfängers ein. Sie ist auf den Empfänger gedruckt.</translation>
    </message>
    <message>
        <source>Switch off the wireless transmitter</source>
        <translation>Funksender ausschalten</translation>
    </message>
    <message>
        <source>The device will stop sending its scores to the wireless receiver and restart so it can use Wi-Fi. The receiver&apos;s pairing is kept, so you can switch back later.

Continue?</source>
        <translation>Das Gerät sendet seine Spielstände dann nicht mehr an den Funkempfänger und startet neu, damit es WLAN nutzen kann. Die Kopplung mit dem Empfänger bleibt erhalten, sodass Sie später zurückwechseln können.

Fortfahren?</translation>
    </message>
    <message>
        <source>Switching off the wireless transmitter…</source>
        <translation>Der Funksender wird ausgeschaltet …</translation>
    </message>
    <message>
        <source>The device is restarting to use Wi-Fi.</source>
        <translation>Das Gerät startet neu, um WLAN zu nutzen.</translation>
    </message>
    <message>
        <source>Use the wireless receiver</source>
        <translation>Funkempfänger verwenden</translation>
    </message>
    <message>
        <source>The device will stop using Wi-Fi and send its scores to the Tallyforge wireless receiver, then restart. Its scores reach the cloud through a computer connected to that receiver.

Make sure the receiver is set up first - you can switch back over USB or Bluetooth.

Continue?</source>
        <translation>Das Gerät nutzt dann kein WLAN mehr, sendet seine Spielstände an den Tallyforge-Funkempfänger und startet neu. Die Spielstände erreichen die Cloud über einen Computer, an dem dieser Empfänger angeschlossen ist.

Richten Sie zuerst den Empfänger ein – über USB oder Bluetooth können Sie zurückwechseln.

Fortfahren?</translation>
    </message>
    <message>
        <source>Switching to the wireless receiver…</source>
        <translation>Wechsel zum Funkempfänger …</translation>
    </message>
    <message>
        <source>New pairing key - enter it on the receiver (shown only once):
%1</source>
        <translation>Neuer Kopplungsschlüssel – geben Sie ihn am Empfänger ein (wird nur einmal angezeigt):
%1</translation>
    </message>
    <message>
        <source>The device is restarting and will send its scores to the wireless receiver. Wi-Fi is off.</source>
        <translation>Das Gerät startet neu und sendet seine Spielstände dann an den Funkempfänger. WLAN ist aus.</translation>
    </message>
</context>
<context>
    <name>tallyforge::WirelessGroup</name>
    <message>
        <source>Wi-Fi or Tallyforge wireless receiver</source>
        <translation>WLAN oder Tallyforge-Funkempfänger</translation>
    </message>
    <message>
        <source>aa:bb:cc:dd:ee:ff (printed on the receiver)</source>
        <translation>aa:bb:cc:dd:ee:ff (auf den Empfänger gedruckt)</translation>
    </message>
    <message>
        <source>32-character pairing key, or leave empty to make a new one</source>
        <translation>Kopplungsschlüssel mit 32 Zeichen, oder leer lassen, um einen neuen zu erzeugen</translation>
    </message>
    <message>
        <source>Receiver address</source>
        <translation>Adresse des Empfängers</translation>
    </message>
    <message>
        <source>Pairing key</source>
        <translation>Kopplungsschlüssel</translation>
    </message>
    <message>
        <source>This device is sending its scores to a Tallyforge wireless receiver%1, so its Wi-Fi is switched off.</source>
        <translation>Dieses Gerät sendet seine Spielstände an einen Tallyforge-Funkempfänger%1, daher ist sein WLAN ausgeschaltet.</translation>
    </message>
    <message>
        <source>The wireless transmitter could not start: %1</source>
        <translation>Der Funksender konnte nicht starten: %1</translation>
    </message>
    <message>
        <source>This device connects over Wi-Fi. It is also paired with a Tallyforge wireless receiver%1, so it can send its scores there instead.</source>
        <translation>Dieses Gerät verbindet sich über WLAN. Es ist auch mit einem Tallyforge-Funkempfänger%1 gekoppelt und kann seine Spielstände stattdessen dorthin senden.</translation>
    </message>
    <message>
        <source>This device connects over Wi-Fi. If the venue has no Wi-Fi it can send its scores to a Tallyforge wireless receiver instead.</source>
        <translation>Dieses Gerät verbindet sich über WLAN. Wenn es am Veranstaltungsort kein WLAN gibt, kann es seine Spielstände stattdessen an einen Tallyforge-Funkempfänger senden.</translation>
    </message>
    <message>
        <source>Switch off the wireless transmitter and use Wi-Fi</source>
        <translation>Funksender ausschalten und WLAN nutzen</translation>
    </message>
    <message>
        <source>Use the wireless receiver instead of Wi-Fi</source>
        <translation>Funkempfänger statt WLAN verwenden</translation>
    </message>
    <message>
        <source>Switch to the wireless receiver and restart</source>
        <translation>Zum Funkempfänger wechseln und neu starten</translation>
    </message>
    <message>
        <source>Set up a Tallyforge wireless receiver instead of Wi-Fi…</source>
        <translation>Tallyforge-Funkempfänger statt WLAN einrichten …</translation>
    </message>
</context>
<context>
    <name>tallyforge::WirelessInputGroup</name>
    <message>
        <source>Wireless input</source>
        <translation>Funkeingang</translation>
    </message>
    <message>
        <source>Find the channel automatically</source>
        <translation>Kanal automatisch finden</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Channel (0-79)</source>
        <translation>Kanal (0-79)</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>hex 0B-1A, blank = unchanged</source>
        <translation>hex 0B-1A, leer = unverändert</translation>
    </message>
    <message>
        <source>PAN ID</source>
        <translation>PAN-ID</translation>
    </message>
    <message>
        <source>hex 16-bit, blank = unchanged</source>
        <translation>hex 16 Bit, leer = unverändert</translation>
    </message>
    <message>
        <source>Wireless input (Xbee)</source>
        <translation>Funkeingang (Xbee)</translation>
    </message>
    <message>
        <source>Wireless input (RM024)</source>
        <translation>Funkeingang (RM024)</translation>
    </message>
</context>
</TS>
