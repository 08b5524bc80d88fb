<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutView</name>
    <message>
        <source>About Fadewell</source>
        <translation>Über Fadewell</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Copyright © 2026 The Fadewell authors</source>
        <translation>Copyright © 2026 Die Autoren von Fadewell</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>Acknowledgements</source>
        <translation>Danksagungen</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>Über Fadewell</translation>
    </message>
</context>
<context>
    <name>AppList</name>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
</context>
<context>
    <name>AppsPane</name>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>No Remembered Apps</source>
        <translation>Keine gemerkten Apps</translation>
    </message>
    <message>
        <source>When you change an app’s volume or output, Fadewell remembers it and uses it again the next time the app plays sound.</source>
        <translation>Wenn du die Lautstärke oder die Ausgabe einer App änderst, merkt Fadewell sich das und verwendet es wieder, sobald die App das nächste Mal Ton abspielt.</translation>
    </message>
    <message>
        <source>Fadewell uses these settings whenever the app plays sound.</source>
        <translation>Fadewell verwendet diese Einstellungen, wann immer die App Ton abspielt.</translation>
    </message>
    <message>
        <source>Forget All</source>
        <translation>Alle vergessen</translation>
    </message>
    <message>
        <source>Forget All Apps?</source>
        <translation>Alle Apps vergessen?</translation>
    </message>
    <message>
        <source>Every app plays at its own volume and on its own output again.</source>
        <translation>Jede App spielt wieder mit ihrer eigenen Lautstärke und auf ihrer eigenen Ausgabe.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CallModeSection</name>
    <message>
        <source>Call Mode</source>
        <translation>Anrufmodus</translation>
    </message>
</context>
<context>
    <name>CallsPane</name>
    <message>
        <source>Calls</source>
        <translation>Anrufe</translation>
    </message>
    <message>
        <source>Lower Other Apps During Calls</source>
        <translation>Andere Apps bei Anrufen leiser stellen</translation>
    </message>
    <message>
        <source>Volume of Other Apps</source>
        <translation>Lautstärke anderer Apps</translation>
    </message>
    <message>
        <source>Their own volume stays as you set it.</source>
        <translation>Ihre eigene Lautstärke bleibt, wie du sie eingestellt hast.</translation>
    </message>
    <message>
        <source>Detect Calls In</source>
        <translation>Anrufe erkennen in</translation>
    </message>
    <message>
        <source>Browsers count when a website uses the microphone, as in a video call.</source>
        <translation>Browser zählen, wenn eine Website das Mikrofon verwendet, etwa bei einem Videoanruf.</translation>
    </message>
</context>
<context>
    <name>DiagnosticsView</name>
    <message>
        <source>Diagnostics</source>
        <translation>Diagnose</translation>
    </message>
    <message>
        <source>This helps to find a fault. Nothing of it is sent anywhere: read it, then copy or save it for whoever helps you.</source>
        <translation>Das hilft, einen Fehler zu finden. Nichts davon wird irgendwohin gesendet: Lies es und kopiere oder sichere es dann für alle, die dir helfen.</translation>
    </message>
    <message>
        <source>Leave Out the Names of Apps</source>
        <translation>App-Namen weglassen</translation>
    </message>
    <message>
        <source>Apps are called “app 1”, “app 2” and so on.</source>
        <translation>Apps heißen „app 1“, „app 2“ und so weiter.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Sichern …</translation>
    </message>
</context>
<context>
    <name>DiagnosticsWindow</name>
    <message>
        <source>Diagnostics</source>
        <translation>Diagnose</translation>
    </message>
    <message>
        <source>Save Diagnostics</source>
        <translation>Diagnose sichern</translation>
    </message>
</context>
<context>
    <name>DoneStep</name>
    <message>
        <source>This desktop has no tray for Fadewell’s icon. Choose “Open Mixer” in Fadewell’s entry among your apps to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>Dieser Desktop hat keinen Platz für das Symbol von Fadewell. Wähle „Mixer öffnen“ im Eintrag von Fadewell unter deinen Apps, um die Lautstärke jeder App zu ändern. Tastenkürzel legst du in den Einstellungen fest.</translation>
    </message>
    <message>
        <source>You’re All Set</source>
        <translation>Alles bereit</translation>
    </message>
    <message>
        <source>its icon</source>
        <translation>sein Symbol</translation>
    </message>
    <message>
        <source>Open at Login</source>
        <translation>Bei der Anmeldung öffnen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>GeneralPane</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Open at Login</source>
        <translation>Bei der Anmeldung öffnen</translation>
    </message>
    <message>
        <source>When it’s hidden, open Fadewell again to see these settings. Your shortcuts keep working.</source>
        <translation>Ist es ausgeblendet, öffne Fadewell noch einmal, um diese Einstellungen zu sehen. Deine Tastenkürzel funktionieren weiterhin.</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons at the moment. In GNOME, the extension “AppIndicator and KStatusNotifierItem Support” adds them. Until then, “Open Mixer” in Fadewell’s entry among your apps opens the mixer.</source>
        <translation>Dieser Desktop zeigt im Moment keine Symbole an. In GNOME ergänzt sie die Erweiterung „AppIndicator and KStatusNotifierItem Support“. Bis dahin öffnet „Mixer öffnen“ im Eintrag von Fadewell unter deinen Apps den Mixer.</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>Mixer öffnen</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>System Audio Recording</source>
        <translation>Aufnahme von Systemaudio</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Erlaubt</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Wird geprüft</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Sound System</source>
        <translation>Tonsystem</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>Über Fadewell</translation>
    </message>
    <message>
        <source>Diagnostics…</source>
        <translation>Diagnose …</translation>
    </message>
</context>
<context>
    <name>HelpView</name>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>MenuBarIcon</name>
    <message>
        <source>Fadewell, Microphone Off</source>
        <translation>Fadewell, Mikrofon aus</translation>
    </message>
    <message>
        <source>Fadewell, Call Mode On</source>
        <translation>Fadewell, Anrufmodus an</translation>
    </message>
</context>
<context>
    <name>MicrophoneSection</name>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Input Volume</source>
        <translation>Eingangspegel</translation>
    </message>
</context>
<context>
    <name>MissingTrayNotice</name>
    <message>
        <source>Fadewell is running</source>
        <translation>Fadewell läuft</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>Mixer öffnen</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons. “Open Mixer” in Fadewell’s entry among your apps opens it, and so does the command “fadewell --show”.</source>
        <translation>Dieser Desktop zeigt keine Symbole im Infobereich. „Mixer öffnen“ im Eintrag von Fadewell unter deinen Apps öffnet den Mixer, ebenso der Befehl „fadewell --show“.</translation>
    </message>
</context>
<context>
    <name>MoreMenu</name>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>MuteToggle</name>
    <message>
        <source>Unmute</source>
        <translation>Stummschaltung aufheben</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Stummschalten</translation>
    </message>
</context>
<context>
    <name>NoAppsView</name>
    <message>
        <source>No Apps Playing Sound</source>
        <translation>Keine App spielt Ton ab</translation>
    </message>
    <message>
        <source>Apps appear here when they play sound.</source>
        <translation>Apps erscheinen hier, sobald sie Ton abspielen.</translation>
    </message>
</context>
<context>
    <name>OnboardingView</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>Willkommen bei Fadewell</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>Willkommen bei Fadewell</translation>
    </message>
</context>
<context>
    <name>OutputMenu</name>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Output: %1</source>
        <translation>Ausgabe: %1</translation>
    </message>
</context>
<context>
    <name>PaneTabs</name>
    <message>
        <source>Panes</source>
        <translation>Bereiche</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Anrufe</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
</context>
<context>
    <name>PanelRows</name>
    <message>
        <source>In Call</source>
        <translation>Im Anruf</translation>
    </message>
    <message>
        <source>Lowered</source>
        <translation>Gesenkt</translation>
    </message>
    <message>
        <source>Connects itself and can’t be controlled.</source>
        <translation>Verbindet sich selbst und lässt sich nicht steuern.</translation>
    </message>
    <message>
        <source>Sends encoded sound and can’t be controlled.</source>
        <translation>Sendet kodierten Ton und lässt sich nicht steuern.</translation>
    </message>
    <message>
        <source>Holds its device for itself and can’t be controlled.</source>
        <translation>Beansprucht sein Gerät für sich und lässt sich nicht steuern.</translation>
    </message>
    <message>
        <source>Asks not to be moved and can’t be controlled.</source>
        <translation>Will nicht verschoben werden und lässt sich nicht steuern.</translation>
    </message>
    <message>
        <source>Another program keeps it elsewhere, so it can’t be controlled.</source>
        <translation>Ein anderes Programm hält sie woanders fest; sie lässt sich nicht steuern.</translation>
    </message>
    <message>
        <source>Can’t be controlled.</source>
        <translation>Lässt sich nicht steuern.</translation>
    </message>
</context>
<context>
    <name>PermissionNotice</name>
    <message>
        <source>To change the volume of apps, allow Fadewell to record system audio.</source>
        <translation>Erlaube Fadewell, den Ton des Systems aufzunehmen, um die Lautstärke von Apps zu ändern.</translation>
    </message>
</context>
<context>
    <name>PermissionStep</name>
    <message>
        <source>Allow Access to App Sound</source>
        <translation>Zugriff auf den Ton der Apps erlauben</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Erlaubt</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
    <message>
        <source>Allow Access</source>
        <translation>Zugriff erlauben</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
</context>
<context>
    <name>RememberedAppRow</name>
    <message>
        <source>Forget</source>
        <translation>Vergessen</translation>
    </message>
    <message>
        <source>Forget %1</source>
        <translation>%1 vergessen</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Fadewell Settings</source>
        <translation>Einstellungen von Fadewell</translation>
    </message>
</context>
<context>
    <name>ShortcutField</name>
    <message>
        <source>Press the shortcut, or Escape to cancel</source>
        <translation>Drücke das Tastenkürzel, oder Escape zum Abbrechen</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>Tasten drücken</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Clear %1</source>
        <translation>%1: löschen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>ShortcutNames</name>
    <message>
        <source>Control</source>
        <translation>Control</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Option</source>
        <translation>Option</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Command</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Fn</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Rückschritt</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Up Arrow</source>
        <translation>Pfeil auf</translation>
    </message>
    <message>
        <source>Right Arrow</source>
        <translation>Pfeil rechts</translation>
    </message>
    <message>
        <source>Down Arrow</source>
        <translation>Pfeil ab</translation>
    </message>
    <message>
        <source>Left Arrow</source>
        <translation>Pfeil links</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Keypad %1</source>
        <translation>Ziffernblock %1</translation>
    </message>
</context>
<context>
    <name>ShortcutsPane</name>
    <message>
        <source>Changes the volume of the app you’re using in steps of 10 %, up to its own level. Shortcuts work in every app.</source>
        <translation>Ändert die Lautstärke der App, die du gerade verwendest, in Schritten von 10 %, höchstens bis zu ihrem eigenen Pegel. Tastenkürzel funktionieren in jeder App.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Your desktop assigns these shortcuts: change them in its keyboard settings.</source>
        <translation>Dein Desktop vergibt diese Tastenkürzel: Ändere sie in dessen Tastatureinstellungen.</translation>
    </message>
    <message>
        <source>This desktop doesn’t give shortcuts to apps. In its keyboard settings you can assign shortcuts to these commands yourself.</source>
        <translation>Dieser Desktop gibt Apps keine Tastenkürzel. In seinen Tastatureinstellungen kannst du diesen Befehlen selbst Tastenkürzel zuweisen.</translation>
    </message>
    <message>
        <source>Turn Microphone On or Off</source>
        <translation>Mikrofon ein- oder ausschalten</translation>
    </message>
    <message>
        <source>Turn Call Mode On or Off</source>
        <translation>Anrufmodus ein- oder ausschalten</translation>
    </message>
    <message>
        <source>Turn Up the App in Front</source>
        <translation>App im Vordergrund lauter stellen</translation>
    </message>
    <message>
        <source>Turn Down the App in Front</source>
        <translation>App im Vordergrund leiser stellen</translation>
    </message>
</context>
<context>
    <name>SystemPages</name>
    <message>
        <source>How to Allow It…</source>
        <translation>So wird es erlaubt …</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Systemeinstellungen öffnen</translation>
    </message>
</context>
<context>
    <name>TrayMenu</name>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Call Mode</source>
        <translation>Anrufmodus</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>Mixer öffnen</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>Über Fadewell</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>Fadewell beenden</translation>
    </message>
</context>
<context>
    <name>VolumeSlider</name>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
</context>
<context>
    <name>WelcomeStep</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>Willkommen bei Fadewell</translation>
    </message>
    <message>
        <source>Set the volume of each app, and keep your calls clear.</source>
        <translation>Stelle die Lautstärke jeder App ein und halte deine Anrufe verständlich.</translation>
    </message>
    <message>
        <source>Volume for Each App</source>
        <translation>Lautstärke für jede App</translation>
    </message>
    <message>
        <source>Turn any app down, or send it to other speakers or headphones.</source>
        <translation>Stelle jede App leiser oder schicke sie an andere Lautsprecher oder Kopfhörer.</translation>
    </message>
    <message>
        <source>Calls Come First</source>
        <translation>Anrufe gehen vor</translation>
    </message>
    <message>
        <source>When a call starts, other apps get quieter by themselves.</source>
        <translation>Beginnt ein Anruf, werden andere Apps von selbst leiser.</translation>
    </message>
    <message>
        <source>Your Microphone at a Glance</source>
        <translation>Dein Mikrofon im Blick</translation>
    </message>
    <message>
        <source>See which apps use it, and turn it off for all of them at once.</source>
        <translation>Sieh, welche Apps es verwenden, und schalte es für alle auf einmal aus.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
</context>
<context>
    <name>fadewell::DiagnosticsModel</name>
    <message>
        <source>Gathering…</source>
        <translation>Wird gesammelt …</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gesichert als %1</translation>
    </message>
    <message>
        <source>It couldn’t be saved: %1</source>
        <translation>Das Sichern ist fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>fadewell::GeneralPaneModel</name>
    <message>
        <source>%1, connected</source>
        <translation>%1, verbunden</translation>
    </message>
    <message>
        <source>%1, not running</source>
        <translation>%1, läuft nicht</translation>
    </message>
</context>
<context>
    <name>fadewell::HelpWindow</name>
    <message>
        <source>Allowing Access to App Sound</source>
        <translation>Zugriff auf den Ton der Apps erlauben</translation>
    </message>
    <message>
        <source>Opening Fadewell at Login</source>
        <translation>Fadewell bei der Anmeldung öffnen</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell takes its sound from the sound system, PipeWire, and gives it back louder or quieter. PipeWire doesn’t let it.</source>
        <translation>Um die Lautstärke einer App zu ändern, übernimmt Fadewell ihren Ton vom Tonsystem PipeWire und gibt ihn lauter oder leiser zurück. PipeWire lässt das nicht zu.</translation>
    </message>
    <message>
        <source>Fadewell runs in a sandbox. Let it reach PipeWire with this command, and then open Fadewell again:</source>
        <translation>Fadewell läuft in einer Sandbox. Lass es mit diesem Befehl an PipeWire heran und öffne Fadewell dann erneut:</translation>
    </message>
    <message>
        <source>Usually every app of yours may do this. A rule of the session manager, WirePlumber, takes the right away: look for one about “access” or “permissions” in these folders, and remove it:</source>
        <translation>Normalerweise darf das jede deiner Apps. Eine Regel der Sitzungsverwaltung WirePlumber nimmt das Recht: Suche in diesen Ordnern nach einer zu „access“ oder „permissions“ und entferne sie:</translation>
    </message>
    <message>
        <source>Then restart the session manager with this command. Fadewell notices by itself that it is allowed.</source>
        <translation>Starte die Sitzungsverwaltung dann mit diesem Befehl neu. Fadewell bemerkt die Erlaubnis von selbst.</translation>
    </message>
    <message>
        <source>Your desktop keeps Fadewell from opening at login. Its settings have a list of the apps that open then, often called “Autostart” or “Startup Applications”: switch Fadewell on there.</source>
        <translation>Dein Desktop verhindert, dass Fadewell bei der Anmeldung geöffnet wird. In seinen Einstellungen steht eine Liste der Apps, die dann geöffnet werden, oft „Autostart“ oder „Startprogramme“ genannt: Schalte Fadewell dort ein.</translation>
    </message>
    <message>
        <source>Where a desktop has no such list, Fadewell’s file in this folder decides; a line “Hidden=true” in it means off:</source>
        <translation>Hat ein Desktop keine solche Liste, entscheidet die Datei von Fadewell in diesem Ordner; eine Zeile „Hidden=true“ darin bedeutet aus:</translation>
    </message>
</context>
<context>
    <name>fadewell::PanelModel</name>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>Über Fadewell</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>Fadewell beenden</translation>
    </message>
    <message>
        <source>Use System Setting</source>
        <translation>Systemeinstellung verwenden</translation>
    </message>
    <message>
        <source>%1 (Not Connected)</source>
        <translation>%1 (nicht verbunden)</translation>
    </message>
    <message>
        <source>Lowers other apps when a call starts.</source>
        <translation>Senkt andere Apps, wenn ein Anruf beginnt.</translation>
    </message>
    <message>
        <source>On during your call in %1.</source>
        <translation>Aktiv während deines Anrufs in %1.</translation>
    </message>
    <message>
        <source>On until you turn it off.</source>
        <translation>Aktiv, bis du ihn ausschaltest.</translation>
    </message>
    <message>
        <source>Off for all apps.</source>
        <translation>Für alle Apps ausgeschaltet.</translation>
    </message>
    <message>
        <source>No Microphone</source>
        <translation>Kein Mikrofon</translation>
    </message>
    <message>
        <source>In use by %1.</source>
        <translation>Wird verwendet von %1.</translation>
    </message>
</context>
<context>
    <name>fadewell::PlatformTexts</name>
    <message>
        <source>Show in Menu Bar</source>
        <translation>In der Menüleiste anzeigen</translation>
    </message>
    <message>
        <source>Show in System Tray</source>
        <translation>Im Infobereich anzeigen</translation>
    </message>
    <message>
        <source>Allow Fadewell under Login Items in System Settings.</source>
        <translation>Erlaube Fadewell unter „Anmeldeobjekte“ in den Systemeinstellungen.</translation>
    </message>
    <message>
        <source>Allow Fadewell under Autostart in System Settings.</source>
        <translation>Erlaube Fadewell unter „Autostart“ in den Systemeinstellungen.</translation>
    </message>
    <message>
        <source>Needed to change the volume of apps. Sound is processed on your Mac and is never saved or sent.</source>
        <translation>Nötig, um die Lautstärke von Apps zu ändern. Ton wird auf deinem Mac verarbeitet und nie gespeichert oder gesendet.</translation>
    </message>
    <message>
        <source>Needed to change the volume of apps. Sound is processed on your computer and is never saved or sent.</source>
        <translation>Nötig, um die Lautstärke von Apps zu ändern. Ton wird auf deinem Computer verarbeitet und nie gespeichert oder gesendet.</translation>
    </message>
    <message>
        <source>Call mode turns on by itself when a call app uses the microphone. You can always turn it on or off in the menu bar.</source>
        <translation>Der Anrufmodus schaltet sich von selbst ein, wenn eine Anruf-App das Mikrofon verwendet. Du kannst ihn jederzeit in der Menüleiste ein- oder ausschalten.</translation>
    </message>
    <message>
        <source>Call mode turns on by itself when a call app uses the microphone. You can always turn it on or off in the mixer.</source>
        <translation>Der Anrufmodus schaltet sich von selbst ein, wenn eine Anruf-App das Mikrofon verwendet. Du kannst ihn jederzeit im Mixer ein- oder ausschalten.</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell needs the sound it plays. macOS calls this System Audio Recording. Sound is processed on your Mac and is never saved or sent.</source>
        <translation>Um die Lautstärke einer App zu ändern, braucht Fadewell den Ton, den sie abspielt. macOS nennt das „Aufnahme von Systemaudio“. Ton wird auf deinem Mac verarbeitet und nie gespeichert oder gesendet.</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell needs the sound it plays. The sound system, PipeWire, has to allow this. Sound is processed on your computer and is never saved or sent.</source>
        <translation>Um die Lautstärke einer App zu ändern, braucht Fadewell den Ton, den sie abspielt. Das Tonsystem PipeWire muss das erlauben. Ton wird auf deinem Computer verarbeitet und nie gespeichert oder gesendet.</translation>
    </message>
    <message>
        <source>Answer the question from macOS.</source>
        <translation>Beantworte die Frage von macOS.</translation>
    </message>
    <message>
        <source>Waiting for the sound system to allow it.</source>
        <translation>Warten auf die Erlaubnis des Tonsystems.</translation>
    </message>
    <message>
        <source>You can allow it later in System Settings ▸ Privacy &amp; Security ▸ Screen &amp; System Audio Recording.</source>
        <translation>Du kannst es später erlauben: Systemeinstellungen ▸ Datenschutz &amp; Sicherheit ▸ Bildschirm- und Systemaudioaufnahme.</translation>
    </message>
    <message>
        <source>You can allow it later: Settings ▸ General ▸ Permissions tells how.</source>
        <translation>Du kannst es später erlauben: Einstellungen ▸ Allgemein ▸ Berechtigungen sagt, wie.</translation>
    </message>
    <message>
        <source>Fadewell is in the menu bar. Click %1 to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>Fadewell ist in der Menüleiste. Klicke auf %1, um die Lautstärke jeder App zu ändern. Tastenkürzel legst du in den Einstellungen fest.</translation>
    </message>
    <message>
        <source>Fadewell is in the system tray. Click %1 to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>Fadewell ist im Infobereich. Klicke auf %1, um die Lautstärke jeder App zu ändern. Tastenkürzel legst du in den Einstellungen fest.</translation>
    </message>
</context>
<context>
    <name>fadewell::RecorderField</name>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>Fadewell beenden</translation>
    </message>
</context>
<context>
    <name>fadewell::RememberedAppsModel</name>
    <message>
        <source>Muted</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Other Output</source>
        <translation>Andere Ausgabe</translation>
    </message>
</context>
<context>
    <name>fadewell::ShortcutsPaneModel</name>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
</context>
</TS>
