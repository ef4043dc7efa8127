<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>BleReplyAssembler</name>
    <message>
        <source>the device reply was truncated (a fragment was lost)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Carriers</name>
    <message>
        <source>Waiting for the device to answer. If it just powered on this can take up to a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting over Bluetooth. If your computer asks for a passkey, enter the 6-digit number from the device&apos;s label.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contacting the device on your network…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth access was denied. Allow &quot;Tallyforge Bluetooth Helper&quot; in your system&apos;s Privacy &amp; Security → Bluetooth settings, then scan again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is turned off or unavailable on this computer.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ControllerCatalog</name>
    <message>
        <source>Tallyforge wireless / ethernet bridge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current loop (CL)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NEVCO serial</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ethernet bridge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless channel %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NetworkTestText</name>
    <message>
        <source>Local network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DNS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud (secure port)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud (backup route)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Internet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End to end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Still running…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All checks passed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some checks failed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>nothing to install</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>could not write %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the package is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>could not remove %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update package was not in the expected shape. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update package contained an unexpected link, so it was rejected. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update package did not contain the plugin for this computer. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is out, but not available for this computer yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update information is incomplete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 needs OBS %2 or newer (this is OBS %3).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update information was not readable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This update needs a newer Tallyforge plugin than the one installed. Download the installer from the Tallyforge website.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update information has no valid version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update could not be installed (%1). The current version was left in place.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatusText</name>
    <message>
        <source>yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi signal (dBm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ethernet address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud route</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TCP clients</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Uptime (s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TLS fingerprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password change needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sport: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No scoreboard data yet.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::AccountLists</name>
    <message>
        <source>Sign in from the Tallyforge dock to see your graphics.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::AdvancedPanel</name>
    <message>
        <source>Restart device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show device log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Danger zone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset admin password to the factory password…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Factory reset…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart the device now? Live scores pause for about a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restarting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the log…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset admin password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set the admin password back to the factory password? You will be asked to choose a new one next time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password reset.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Factory reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This erases every setting on the device, including Wi-Fi and its cloud sign-in.

Type RESET to continue.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is resetting.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::BleBridge</name>
    <message>
        <source>The Bluetooth helper is missing from this install. Reinstall the Tallyforge plugin.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open a local port for the Bluetooth helper.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth helper did not start. Bluetooth setup is unavailable on this system.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth helper stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth did not respond in time.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::BleHelperLines</name>
    <message>
        <source>Bluetooth error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::BleLink</name>
    <message>
        <source>Bluetooth link lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth helper stopped</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::BleTransport</name>
    <message>
        <source>Not connected to a device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That request is too large for the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This computer is not paired with the device yet. Pair it once with the 6-digit passkey from the device&apos;s label or your Tallyforge account (macOS asks automatically; on Windows pair it in Bluetooth settings first), then connect again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::BluetoothHelper</name>
    <message>
        <source>This computer is not paired with the device. Pair it in the system&apos;s Bluetooth settings with the device&apos;s passkey, then connect again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth was stopped on this computer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was given up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was closed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was lost.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device ended the Bluetooth connection before it was ready.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not answer over Bluetooth in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not confirm the request in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device stopped answering over Bluetooth.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device was not found over Bluetooth. Check that it is powered and near this computer, then search again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not connect to the device over Bluetooth. Check that it is powered, near this computer and not connected to another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device does not offer setup over Bluetooth.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not take the request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not let this computer listen to it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The search for Bluetooth devices failed. Try again; if it keeps failing, switch Bluetooth off and on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is still busy with the request before.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth helper does not know that request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A newer search has taken the place of this one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That is not a Bluetooth device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another device was connected over Bluetooth.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No device is connected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is nothing to write.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is switched off on this computer. Switch it on in the system&apos;s settings, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth adapter of this computer is gone.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is not allowed for Tallyforge. Allow it in the system&apos;s privacy settings, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This user may not use Bluetooth on this computer. Ask the computer&apos;s administrator for access to it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Bluetooth service of this computer is not running. Install BlueZ or start its service &quot;bluetooth&quot;, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This computer has no Bluetooth adapter, or it is blocked. Plug one in or unblock it, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::CloudPanel</name>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forget cloud sign-in on this device…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Identifies this device in your Tallyforge account. Only change it if instructed by support.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device ID, e.g. tallyforge0029</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save device ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected to the cloud: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Route: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done. The device no longer has cloud credentials.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forget cloud sign-in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device stops sending scores to the cloud until it is set up for it again. Continue?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::Completion</name>
    <message>
        <source>Device: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi: not connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi: connected (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ConnectPage</name>
    <message>
        <source>Connect to your device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You do not need a Tallyforge account for this. Connect with a USB cable, Bluetooth, or over your local network.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Local network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device number or address, e.g. 0029 or 192.168.1.20</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type the device&apos;s number (the last digits of its name) or its network address. This computer and the device must be on the same network.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The admin password is sent over your local network without encryption. Use USB when you can.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the USB port on the device (or on the wireless receiver). Close any serial monitor first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1  – likely a Tallyforge device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No USB devices found. Plug the device in and press Scan again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 USB port(s) found. Pick the Tallyforge device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device must be paired with this computer first. The 6-digit passkey is on the device&apos;s label and in your Tallyforge account.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for devices… (about 6 seconds)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 device(s) found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Bluetooth devices were seen at all. Check that Bluetooth is on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is working but no Tallyforge device is in range. Move closer and scan again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerGroup</name>
    <message>
        <source>Scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sport</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerPage</name>
    <message>
        <source>Choose the scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ControllerPanel</name>
    <message>
        <source>Pick the scoreboard this device is connected to. Each choice narrows the next.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Manufacturer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sport</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading the list…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not list its scoreboards.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Currently set to this scoreboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the manufacturer, model, sport and input type first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::DeviceManager</name>
    <message>
        <source>Device settings and tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::DeviceSession</name>
    <message>
        <source>This device is set to send its scores to a wireless receiver, so its Wi-Fi is switched off and it cannot see networks. Turn the wireless link off to use Wi-Fi.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking that the device can join %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Joined %1%2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device could not join %1%2. Check the password and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is still working on joining %1. Check back in a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking that the device can join %1… (%2 s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The paired device did not answer through the receiver. Check that the device is powered, in range of the receiver and linked to it, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::DevicesGroup</name>
    <message>
        <source>Devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop sharing this computer&apos;s internet with USB devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set up or manage a device…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Manage the selected device through my account…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB cloud relay</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::DonePage</name>
    <message>
        <source>All set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this device&apos;s live scores in OBS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More settings and tools…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Claim code from the device&apos;s box or account email</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add this device to my account</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Added to your account.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::HostedServer</name>
    <message>
        <source>Could not listen on port %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpAdminTransport</name>
    <message>
        <source>Not connected to a device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is only available over USB or Bluetooth, not over the network.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpAnswer</name>
    <message>
        <source>The device answered with an error (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not reach the device on your network.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::HttpLink</name>
    <message>
        <source>Could not reach %1 on your network. Check the address, and that this computer and the device are on the same network.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ManageDialog</name>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device answered.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Manage %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These actions reach the device through your Tallyforge account, so it must be online.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check device status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device&apos;s answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Asking the device…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status received.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending to the device…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device accepted the new scoreboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking for a firmware update…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update check finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart %1 now? Live scores pause for about a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restarting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is offline; it will restart when it reconnects.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart sent.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ManagerPage</name>
    <message>
        <source>Use live scores in OBS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::NetworkForm</name>
    <message>
        <source>Wi-Fi password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan for networks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect to this network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick the venue&apos;s network. The device uses it to reach your account and the internet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1   (%2 dBm)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::PanelBase</name>
    <message>
        <source>Not connected to a device.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::PluginUpdater</name>
    <message>
        <source>The update address is not valid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not reach the Tallyforge update service. Check your internet connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyforge %1 is up to date.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the Tallyforge website</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This copy of the plugin was installed for all users, so it cannot update itself. Download and run the installer from %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not prepare a download folder (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not write the update to disk.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading version %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading version %1… %2%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download was larger than expected, so it was discarded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download did not finish. Check your internet connection and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download was incomplete, so it was discarded. Try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download did not match its checksum, so it was discarded. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update could not be unpacked on this computer. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update could not be unpacked. Nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is installed. Restart OBS to start using it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::PortalClient</name>
    <message>
        <source>That email and password did not match. Check them and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That code was not accepted. Enter the current 6-digit code from your authenticator app.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Too many attempts. Wait a minute and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not answer. Check that it is powered on and online.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The Tallyforge service could not reach the live data feed. Try again shortly.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That device is not on this account.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You have been signed out. Sign in again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not reach Tallyforge. Check your internet connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your account role is not allowed to do that.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyforge returned an error (%1).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ReceiverPage</name>
    <message>
        <source>Wireless receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set up or manage the paired Tallyforge device through this receiver…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this receiver&apos;s live scores in OBS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new pairing key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>…or enter an existing 32-character key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paired with a device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not paired yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receiving from the device now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not hearing the device right now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signal: %1 dBm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending to the receiver…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved. The receiver restarts to apply it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New pairing key (write this down and enter it on the sending device):
%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ReceiverRequest</name>
    <message>
        <source>The receiver did not answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The receiver refused the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another receiver request is still in progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give a key, ask for a new key, or choose a channel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::RestartBanner</name>
    <message>
        <source>Wait %1 seconds, then close this window and reopen it to reconnect to the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device should be back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close this window and reopen it to reconnect to the device.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::RpcClient</name>
    <message>
        <source>Not connected to a device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device rejected &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not answer &apos;%1&apos; in time</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SceneGroup</name>
    <message>
        <source>Show it in OBS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add live score text to this scene</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyforge Score</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a graphic to this scene</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyforge Graphics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Graphics come from your Tallyforge account. Pick one from the list in the source&apos;s properties.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ScoreboardForm</name>
    <message>
        <source>Manufacturer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sport</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input type</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ScoreboardGroup</name>
    <message>
        <source>Scoreboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use my local network (works without internet)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No devices on this account yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick a scoreboard above.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SecurityPanel</name>
    <message>
        <source>Network access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Other programs can read this device&apos;s live scores over the network with an access token.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security fingerprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security fingerprint (SHA-256)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Access token</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new access token</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy token</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth pairing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The passkey this computer or phone enters the first time it pairs over Bluetooth. It is only shown over a cable or the network.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>6-digit passkey</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show pairing passkey</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Admin password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New password (at least 8 characters)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New password again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set – make a new token to see one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not return a token.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the token now – it is not shown again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New access token</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new access token? Anything using the old one will stop working until you update it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not return a passkey.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fill in the current and new password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The two new passwords do not match.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use at least 8 characters, and not the factory password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password changed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SerialPort</name>
    <message>
        <source>That USB port is in use by another program (close any serial monitor) or access was denied.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open the USB port: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That is not a serial port.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The USB device was unplugged or stopped responding.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::ServerGroup</name>
    <message>
        <source>Share live data with other programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send scores over TCP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let other computers on my network connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not start - port %1 may be in use. Try another port.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>this computer&apos;s address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect to %1:%2 and read one JSON line per update. %3 connected.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SettingsPanel</name>
    <message>
        <source>Save settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow scoreboard changes over the network (controller config API)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send live scores over the network (secure TCP, port 1010)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send test data to the cloud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless output (send scores to a receiver)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network ID (1-20)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel (1-10)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ethernet bridge output (send scores to a wired receiver)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>receiver address, e.g. tallyforge0042.local</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TCP port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cloud over USB (use this computer&apos;s internet)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Local port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not list its controllers; scoreboard choices are unavailable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the scoreboard&apos;s maker, model, sport and connection first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved. The device is switching to the new settings.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SetupDialog</name>
    <message>
        <source>Connecting to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was lost. Check the cable, Bluetooth or network and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signing in with the password saved on your account…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signing in…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving the new password…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting to the paired device through the receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Asking the device over the wireless link. This can take up to a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set up or manage a Tallyforge device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wireless receiver</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SharePanel</name>
    <message>
        <source>Sharing is off, so the device cannot reach the cloud over this cable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the paired device to ask for the cloud. This starts once the device is linked to the receiver and has its cloud sign-in.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is not asking for a cloud connection over USB. Turn on &quot;Cloud over USB&quot; in this device&apos;s Settings tab (the device also needs its cloud sign-in).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected to the cloud through this computer.  Sent %1, received %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This computer could not reach the cloud (%1). Check its internet connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready. This computer connects to %1 as soon as the device asks.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only the live-score cloud link travels over the cable. This device downloads firmware itself, so it needs Wi-Fi or Ethernet for updates (or update its firmware over Wi-Fi once).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (downloading now: %1 received)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware updates for a device with no Wi-Fi or Ethernet also download through this computer%1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Share this computer&apos;s internet connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the device reach the Tallyforge cloud through this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 B</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SignInForm</name>
    <message>
        <source>Tallyforge account (optional)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sign in to see your account&apos;s devices and graphics. Not needed to set up or manage a device, or to show scores from one connected to this computer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Email</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>6-digit code from your authenticator app</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create an account</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forgot password?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter the code from your authenticator app.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SignInPage</name>
    <message>
        <source>Connecting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter this device&apos;s admin password. The factory password did not work.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device admin password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sign in to device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device still has its factory password. Choose a new admin password (at least 8 characters).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New admin password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type it again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device password needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a new device password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use at least 8 characters, and not the factory password.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The two passwords do not match.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SignedInRow</name>
    <message>
        <source>Sign out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signed in as &lt;b&gt;%1&lt;/b&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::SourceManager</name>
    <message>
        <source>Connecting to %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting to %1 on your network…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected to %1, waiting for scoreboard data…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnected from %1. Its scores have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sign in to see live scores.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has not sent any scoreboard data yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Live from %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is offline. Showing its last scores.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signed out. Sign in to see live scores.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Live from %1 over your network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reconnecting to %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lost the connection to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is restarting. Reopen the setup window to reconnect.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::StatusPanel</name>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scoreboard right now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks the device&apos;s local network, internet and cloud connection. Takes about 15 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run network test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Running…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::TlsFeed</name>
    <message>
        <source>The device rejected the connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device rejected the connection. Re-run device setup to refresh its access.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not reach the device on your network (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device did not answer in time</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdateBanner</name>
    <message>
        <source> OBS is streaming or recording right now, so wait until you are done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart OBS to finish updating to version %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update to version %1 did not finish.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyforge %1 is available (you have %2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the download page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress of the update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try again</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdateFooter</name>
    <message>
        <source>Tallyforge plugin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for updates automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Checked %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdateGroup</name>
    <message>
        <source>Running: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UpdatesPanel</name>
    <message>
        <source>Update failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install update and restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lost contact with the device while it updates (it is probably restarting). Reconnect in a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless chip (ESP32-C6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update wireless chip and restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lost contact with the device (it may be restarting).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Up to date.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the latest firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install %1 and restart the device now?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting the update…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading… %1%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Verifying and applying the update…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update applied. The device is restarting – reconnect in a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update wireless chip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update the wireless chip from the staged image and restart the device?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finished. The device may restart.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Working… (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbAdminTransport</name>
    <message>
        <source>The USB device is not connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That request is too large for the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not write to the USB device</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbLink</name>
    <message>
        <source>This USB port did not answer like a Tallyforge device. Check the cable and that the device has finished starting.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::UsbRelays</name>
    <message>
        <source>wireless receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>connected to the cloud through this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot reach the cloud (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ready, waiting for the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>waiting for the paired device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::WifiPage</name>
    <message>
        <source>Connect the device to Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip – use this computer&apos;s internet over USB, or the device already has Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::WifiPanel</name>
    <message>
        <source>Scanning… this can take up to 15 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You can still type the network name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 network(s) found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No networks found. Move the device closer to the router, or type the network name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose or type a network name first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending the network to the device…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter the receiver&apos;s address first. It is printed on the receiver.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch off the wireless transmitter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device will stop sending its scores to the wireless receiver and restart so it can use Wi-Fi. The receiver&apos;s pairing is kept, so you can switch back later.

Continue?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switching off the wireless transmitter…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is restarting to use Wi-Fi.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the wireless receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device will stop using Wi-Fi and send its scores to the Tallyforge wireless receiver, then restart. Its scores reach the cloud through a computer connected to that receiver.

Make sure the receiver is set up first - you can switch back over USB or Bluetooth.

Continue?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switching to the wireless receiver…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New pairing key - enter it on the receiver (shown only once):
%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device is restarting and will send its scores to the wireless receiver. Wi-Fi is off.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::WirelessGroup</name>
    <message>
        <source>Wi-Fi or Tallyforge wireless receiver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>aa:bb:cc:dd:ee:ff (printed on the receiver)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>32-character pairing key, or leave empty to make a new one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receiver address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pairing key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device is sending its scores to a Tallyforge wireless receiver%1, so its Wi-Fi is switched off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The wireless transmitter could not start: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device connects over Wi-Fi. It is also paired with a Tallyforge wireless receiver%1, so it can send its scores there instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device connects over Wi-Fi. If the venue has no Wi-Fi it can send its scores to a Tallyforge wireless receiver instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch off the wireless transmitter and use Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the wireless receiver instead of Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch to the wireless receiver and restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set up a Tallyforge wireless receiver instead of Wi-Fi…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tallyforge::WirelessInputGroup</name>
    <message>
        <source>Wireless input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find the channel automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel (0-79)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>hex 0B-1A, blank = unchanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PAN ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>hex 16-bit, blank = unchanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless input (Xbee)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wireless input (RM024)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
