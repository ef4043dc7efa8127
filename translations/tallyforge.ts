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
    <name>tallyforge::AccountLists</name>
    <message>
        <source>Sign in from the Tallyforge dock to see your graphics.</source>
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
        <source>This comes with a later version of the plugin.</source>
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
</TS>
