<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>AboutView</name>
    <message>
        <source>About Fadewell</source>
        <translation>حول Fadewell</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>Copyright © 2026 The Fadewell authors</source>
        <translation>حقوق النشر © 2026 مؤلفو Fadewell</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>Acknowledgements</source>
        <translation>شكر وتقدير</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>حول Fadewell</translation>
    </message>
</context>
<context>
    <name>AppList</name>
    <message>
        <source>Apps</source>
        <translation>التطبيقات</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>المخرج</translation>
    </message>
</context>
<context>
    <name>AppsPane</name>
    <message>
        <source>Apps</source>
        <translation>التطبيقات</translation>
    </message>
    <message>
        <source>No Remembered Apps</source>
        <translation>لا توجد تطبيقات محفوظة</translation>
    </message>
    <message>
        <source>When you change an app’s volume or output, Fadewell remembers it and uses it again the next time the app plays sound.</source>
        <translation>عندما تغيّر مستوى صوت تطبيق أو مخرجه، يحفظه Fadewell ويستخدمه مجددًا في المرة التالية التي يشغّل فيها التطبيق صوتًا.</translation>
    </message>
    <message>
        <source>Fadewell uses these settings whenever the app plays sound.</source>
        <translation>يستخدم Fadewell هذه الإعدادات كلما شغّل التطبيق صوتًا.</translation>
    </message>
    <message>
        <source>Forget All</source>
        <translation>نسيان الكل</translation>
    </message>
    <message>
        <source>Forget All Apps?</source>
        <translation>نسيان كل التطبيقات؟</translation>
    </message>
    <message>
        <source>Every app plays at its own volume and on its own output again.</source>
        <translation>سيعود كل تطبيق إلى مستوى صوته ومخرجه الخاصين.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>CallModeSection</name>
    <message>
        <source>Call Mode</source>
        <translation>وضع المكالمة</translation>
    </message>
</context>
<context>
    <name>CallsPane</name>
    <message>
        <source>Calls</source>
        <translation>المكالمات</translation>
    </message>
    <message>
        <source>Lower Other Apps During Calls</source>
        <translation>خفض صوت التطبيقات الأخرى أثناء المكالمات</translation>
    </message>
    <message>
        <source>Volume of Other Apps</source>
        <translation>مستوى صوت التطبيقات الأخرى</translation>
    </message>
    <message>
        <source>Their own volume stays as you set it.</source>
        <translation>يبقى مستوى صوتها الخاص كما ضبطته.</translation>
    </message>
    <message>
        <source>Detect Calls In</source>
        <translation>اكتشاف المكالمات في</translation>
    </message>
    <message>
        <source>Browsers count when a website uses the microphone, as in a video call.</source>
        <translation>تُحتسب المتصفحات عندما يستخدم موقع ويب الميكروفون، كما في مكالمة فيديو.</translation>
    </message>
</context>
<context>
    <name>DiagnosticsView</name>
    <message>
        <source>Diagnostics</source>
        <translation>التشخيص</translation>
    </message>
    <message>
        <source>This helps to find a fault. Nothing of it is sent anywhere: read it, then copy or save it for whoever helps you.</source>
        <translation>يساعد هذا على اكتشاف الخلل. لا يُرسَل منه شيء إلى أي مكان: اقرأه ثم انسخه أو احفظه لمن يساعدك.</translation>
    </message>
    <message>
        <source>Leave Out the Names of Apps</source>
        <translation>حذف أسماء التطبيقات</translation>
    </message>
    <message>
        <source>Apps are called “app 1”, “app 2” and so on.</source>
        <translation>تُسمّى التطبيقات “app 1” و“app 2” وهكذا.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>حفظ…</translation>
    </message>
</context>
<context>
    <name>DiagnosticsWindow</name>
    <message>
        <source>Diagnostics</source>
        <translation>التشخيص</translation>
    </message>
    <message>
        <source>Save Diagnostics</source>
        <translation>حفظ التشخيص</translation>
    </message>
</context>
<context>
    <name>DoneStep</name>
    <message>
        <source>This desktop has no tray for Fadewell’s icon. Choose “Open Mixer” in Fadewell’s entry among your apps to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>لا يوفّر سطح المكتب هذا مكانًا لأيقونة Fadewell. اختر «فتح المازج» من مدخل Fadewell بين تطبيقاتك لتغيير مستوى صوت كل تطبيق. يمكنك ضبط اختصارات لوحة المفاتيح في الإعدادات.</translation>
    </message>
    <message>
        <source>You’re All Set</source>
        <translation>كل شيء جاهز</translation>
    </message>
    <message>
        <source>its icon</source>
        <translation>أيقونته</translation>
    </message>
    <message>
        <source>Open at Login</source>
        <translation>الفتح عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>تم</translation>
    </message>
</context>
<context>
    <name>GeneralPane</name>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Open at Login</source>
        <translation>الفتح عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>When it’s hidden, open Fadewell again to see these settings. Your shortcuts keep working.</source>
        <translation>عند إخفائها، افتح Fadewell مرة أخرى لرؤية هذه الإعدادات. تظل اختصاراتك تعمل.</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons at the moment. In GNOME, the extension “AppIndicator and KStatusNotifierItem Support” adds them. Until then, “Open Mixer” in Fadewell’s entry among your apps opens the mixer.</source>
        <translation>لا يعرض سطح المكتب هذا أيقونات في الوقت الحالي. في GNOME يضيفها الامتداد «AppIndicator and KStatusNotifierItem Support». وحتى ذلك الحين يفتح «فتح المازج» في مدخل Fadewell بين تطبيقاتك المازجَ.</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>فتح المازج</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>الأذونات</translation>
    </message>
    <message>
        <source>System Audio Recording</source>
        <translation>تسجيل صوت النظام</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>مسموح</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>جارٍ التحقق</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>الإصدار</translation>
    </message>
    <message>
        <source>Sound System</source>
        <translation>نظام الصوت</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>حول Fadewell</translation>
    </message>
    <message>
        <source>Diagnostics…</source>
        <translation>التشخيص…</translation>
    </message>
</context>
<context>
    <name>HelpView</name>
    <message>
        <source>Done</source>
        <translation>تم</translation>
    </message>
</context>
<context>
    <name>MenuBarIcon</name>
    <message>
        <source>Fadewell, Microphone Off</source>
        <translation>Fadewell، الميكروفون متوقف</translation>
    </message>
    <message>
        <source>Fadewell, Call Mode On</source>
        <translation>Fadewell، وضع المكالمات مفعّل</translation>
    </message>
</context>
<context>
    <name>MicrophoneSection</name>
    <message>
        <source>Microphone</source>
        <translation>الميكروفون</translation>
    </message>
    <message>
        <source>Input Volume</source>
        <translation>مستوى صوت الإدخال</translation>
    </message>
</context>
<context>
    <name>MissingTrayNotice</name>
    <message>
        <source>Fadewell is running</source>
        <translation>Fadewell قيد التشغيل</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>فتح المازج</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons. “Open Mixer” in Fadewell’s entry among your apps opens it, and so does the command “fadewell --show”.</source>
        <translation>لا يعرض سطح المكتب هذا أيقونات في شريط النظام. يفتحه الخيار «فتح المازج» في مدخل Fadewell ضمن تطبيقاتك، وكذلك الأمر «fadewell --show».</translation>
    </message>
</context>
<context>
    <name>MoreMenu</name>
    <message>
        <source>More</source>
        <translation>المزيد</translation>
    </message>
</context>
<context>
    <name>MuteToggle</name>
    <message>
        <source>Unmute</source>
        <translation>إلغاء كتم الصوت</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>كتم الصوت</translation>
    </message>
</context>
<context>
    <name>NoAppsView</name>
    <message>
        <source>No Apps Playing Sound</source>
        <translation>لا تطبيقات تشغّل صوتًا</translation>
    </message>
    <message>
        <source>Apps appear here when they play sound.</source>
        <translation>تظهر التطبيقات هنا عندما تشغّل صوتًا.</translation>
    </message>
</context>
<context>
    <name>OnboardingView</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>مرحبًا بك في Fadewell</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>مرحبًا بك في Fadewell</translation>
    </message>
</context>
<context>
    <name>OutputMenu</name>
    <message>
        <source>Output</source>
        <translation>المخرج</translation>
    </message>
    <message>
        <source>Output: %1</source>
        <translation>المخرج: %1</translation>
    </message>
</context>
<context>
    <name>PaneTabs</name>
    <message>
        <source>Panes</source>
        <translation>الأقسام</translation>
    </message>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>المكالمات</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>التطبيقات</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>الاختصارات</translation>
    </message>
</context>
<context>
    <name>PanelRows</name>
    <message>
        <source>In Call</source>
        <translation>في مكالمة</translation>
    </message>
    <message>
        <source>Lowered</source>
        <translation>مخفّض</translation>
    </message>
    <message>
        <source>Connects itself and can’t be controlled.</source>
        <translation>يوصّل نفسه بنفسه ولا يمكن التحكم فيه.</translation>
    </message>
    <message>
        <source>Sends encoded sound and can’t be controlled.</source>
        <translation>يرسل صوتًا مرمّزًا ولا يمكن التحكم فيه.</translation>
    </message>
    <message>
        <source>Holds its device for itself and can’t be controlled.</source>
        <translation>يحتكر جهازه ولا يمكن التحكم فيه.</translation>
    </message>
    <message>
        <source>Asks not to be moved and can’t be controlled.</source>
        <translation>يطلب عدم نقله ولا يمكن التحكم فيه.</translation>
    </message>
    <message>
        <source>Another program keeps it elsewhere, so it can’t be controlled.</source>
        <translation>يبقيه برنامج آخر في مكان آخر، فلا يمكن التحكم فيه.</translation>
    </message>
    <message>
        <source>Can’t be controlled.</source>
        <translation>لا يمكن التحكم فيه.</translation>
    </message>
</context>
<context>
    <name>PermissionNotice</name>
    <message>
        <source>To change the volume of apps, allow Fadewell to record system audio.</source>
        <translation>لتغيير مستوى صوت التطبيقات، اسمح لتطبيق Fadewell بتسجيل صوت النظام.</translation>
    </message>
</context>
<context>
    <name>PermissionStep</name>
    <message>
        <source>Allow Access to App Sound</source>
        <translation>السماح بالوصول إلى صوت التطبيقات</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>مسموح</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>ليس الآن</translation>
    </message>
    <message>
        <source>Allow Access</source>
        <translation>السماح بالوصول</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>متابعة</translation>
    </message>
</context>
<context>
    <name>RememberedAppRow</name>
    <message>
        <source>Forget</source>
        <translation>نسيان</translation>
    </message>
    <message>
        <source>Forget %1</source>
        <translation>نسيان %1</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Fadewell Settings</source>
        <translation>إعدادات Fadewell</translation>
    </message>
</context>
<context>
    <name>ShortcutField</name>
    <message>
        <source>Press the shortcut, or Escape to cancel</source>
        <translation>اضغط الاختصار، أو Escape للإلغاء</translation>
    </message>
    <message>
        <source>None</source>
        <translation>لا شيء</translation>
    </message>
    <message>
        <source>Press Shortcut</source>
        <translation>اضغط الاختصار</translation>
    </message>
    <message>
        <source>Record Shortcut</source>
        <translation>تسجيل اختصار</translation>
    </message>
    <message>
        <source>Clear %1</source>
        <translation>مسح %1</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>مسح</translation>
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
        <translation>Ctrl</translation>
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
        <translation>Shift</translation>
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
        <translation>Return</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Backspace</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>End</source>
        <translation>End</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>مسافة</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Page Up</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Page Down</translation>
    </message>
    <message>
        <source>Up Arrow</source>
        <translation>السهم لأعلى</translation>
    </message>
    <message>
        <source>Right Arrow</source>
        <translation>السهم لليمين</translation>
    </message>
    <message>
        <source>Down Arrow</source>
        <translation>السهم لأسفل</translation>
    </message>
    <message>
        <source>Left Arrow</source>
        <translation>السهم لليسار</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>مسح</translation>
    </message>
    <message>
        <source>Keypad %1</source>
        <translation>لوحة الأرقام %1</translation>
    </message>
</context>
<context>
    <name>ShortcutsPane</name>
    <message>
        <source>Changes the volume of the app you’re using in steps of 10 %, up to its own level. Shortcuts work in every app.</source>
        <translation>يغيّر مستوى صوت التطبيق الذي تستخدمه بخطوات قدرها 10 %، حتى مستواه الخاص. تعمل الاختصارات في كل التطبيقات.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>الاختصارات</translation>
    </message>
    <message>
        <source>Your desktop assigns these shortcuts: change them in its keyboard settings.</source>
        <translation>يحدد سطح المكتب هذه الاختصارات: غيّرها في إعدادات لوحة المفاتيح الخاصة به.</translation>
    </message>
    <message>
        <source>This desktop doesn’t give shortcuts to apps. In its keyboard settings you can assign shortcuts to these commands yourself.</source>
        <translation>لا يمنح سطح المكتب هذا اختصارات للتطبيقات. يمكنك في إعدادات لوحة المفاتيح الخاصة به تعيين اختصارات لهذه الأوامر بنفسك.</translation>
    </message>
    <message>
        <source>Turn Microphone On or Off</source>
        <translation>تشغيل الميكروفون أو إيقافه</translation>
    </message>
    <message>
        <source>Turn Call Mode On or Off</source>
        <translation>تشغيل وضع المكالمات أو إيقافه</translation>
    </message>
    <message>
        <source>Turn Up the App in Front</source>
        <translation>رفع صوت التطبيق الأمامي</translation>
    </message>
    <message>
        <source>Turn Down the App in Front</source>
        <translation>خفض صوت التطبيق الأمامي</translation>
    </message>
</context>
<context>
    <name>SystemPages</name>
    <message>
        <source>How to Allow It…</source>
        <translation>كيفية السماح…</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>فتح إعدادات النظام</translation>
    </message>
</context>
<context>
    <name>TrayMenu</name>
    <message>
        <source>Microphone</source>
        <translation>الميكروفون</translation>
    </message>
    <message>
        <source>Call Mode</source>
        <translation>وضع المكالمة</translation>
    </message>
    <message>
        <source>Open Mixer</source>
        <translation>فتح المازج</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>الإعدادات…</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>حول Fadewell</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>إنهاء Fadewell</translation>
    </message>
</context>
<context>
    <name>VolumeSlider</name>
    <message>
        <source>Volume</source>
        <translation>مستوى الصوت</translation>
    </message>
</context>
<context>
    <name>WelcomeStep</name>
    <message>
        <source>Welcome to Fadewell</source>
        <translation>مرحبًا بك في Fadewell</translation>
    </message>
    <message>
        <source>Set the volume of each app, and keep your calls clear.</source>
        <translation>اضبط مستوى صوت كل تطبيق، وحافظ على وضوح مكالماتك.</translation>
    </message>
    <message>
        <source>Volume for Each App</source>
        <translation>مستوى صوت لكل تطبيق</translation>
    </message>
    <message>
        <source>Turn any app down, or send it to other speakers or headphones.</source>
        <translation>اخفض صوت أي تطبيق، أو أرسله إلى مكبرات صوت أو سماعات أخرى.</translation>
    </message>
    <message>
        <source>Calls Come First</source>
        <translation>المكالمات أولًا</translation>
    </message>
    <message>
        <source>When a call starts, other apps get quieter by themselves.</source>
        <translation>عند بدء مكالمة، تنخفض أصوات التطبيقات الأخرى تلقائيًا.</translation>
    </message>
    <message>
        <source>Your Microphone at a Glance</source>
        <translation>ميكروفونك في لمحة</translation>
    </message>
    <message>
        <source>See which apps use it, and turn it off for all of them at once.</source>
        <translation>اعرف التطبيقات التي تستخدمه، وأوقفه لها جميعًا دفعة واحدة.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>متابعة</translation>
    </message>
</context>
<context>
    <name>fadewell::DiagnosticsModel</name>
    <message>
        <source>Gathering…</source>
        <translation>جارٍ الجمع…</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>تم النسخ</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>حُفظ باسم %1</translation>
    </message>
    <message>
        <source>It couldn’t be saved: %1</source>
        <translation>تعذّر الحفظ: %1</translation>
    </message>
</context>
<context>
    <name>fadewell::GeneralPaneModel</name>
    <message>
        <source>%1, connected</source>
        <translation>%1، متصل</translation>
    </message>
    <message>
        <source>%1, not running</source>
        <translation>%1، لا يعمل</translation>
    </message>
</context>
<context>
    <name>fadewell::HelpWindow</name>
    <message>
        <source>Allowing Access to App Sound</source>
        <translation>السماح بالوصول إلى صوت التطبيقات</translation>
    </message>
    <message>
        <source>Opening Fadewell at Login</source>
        <translation>فتح Fadewell عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell takes its sound from the sound system, PipeWire, and gives it back louder or quieter. PipeWire doesn’t let it.</source>
        <translation>لتغيير مستوى صوت تطبيق، يأخذ Fadewell صوته من نظام الصوت PipeWire ويعيده أعلى أو أخفض. لا يسمح PipeWire بذلك.</translation>
    </message>
    <message>
        <source>Fadewell runs in a sandbox. Let it reach PipeWire with this command, and then open Fadewell again:</source>
        <translation>يعمل Fadewell في بيئة معزولة. اسمح له بالوصول إلى PipeWire بهذا الأمر، ثم افتح Fadewell من جديد:</translation>
    </message>
    <message>
        <source>Usually every app of yours may do this. A rule of the session manager, WirePlumber, takes the right away: look for one about “access” or “permissions” in these folders, and remove it:</source>
        <translation>عادةً يُسمح بذلك لكل تطبيقاتك. تمنع ذلك قاعدة في مدير الجلسة WirePlumber: ابحث في هذين المجلدين عن قاعدة حول «access» أو «permissions» وأزلها:</translation>
    </message>
    <message>
        <source>Then restart the session manager with this command. Fadewell notices by itself that it is allowed.</source>
        <translation>ثم أعد تشغيل مدير الجلسة بهذا الأمر. يلاحظ Fadewell السماح من تلقاء نفسه.</translation>
    </message>
    <message>
        <source>Your desktop keeps Fadewell from opening at login. Its settings have a list of the apps that open then, often called “Autostart” or “Startup Applications”: switch Fadewell on there.</source>
        <translation>يمنع سطح المكتب فتح Fadewell عند تسجيل الدخول. في إعداداته قائمة بالتطبيقات التي تُفتح عندئذ، وتسمى غالبًا «Autostart» أو «تطبيقات بدء التشغيل»: فعّل Fadewell فيها.</translation>
    </message>
    <message>
        <source>Where a desktop has no such list, Fadewell’s file in this folder decides; a line “Hidden=true” in it means off:</source>
        <translation>إذا لم توجد قائمة كهذه، فملف Fadewell في هذا المجلد هو الفيصل؛ وسطر «Hidden=true» فيه يعني التعطيل:</translation>
    </message>
</context>
<context>
    <name>fadewell::PanelModel</name>
    <message>
        <source>Settings…</source>
        <translation>الإعدادات…</translation>
    </message>
    <message>
        <source>About Fadewell</source>
        <translation>حول Fadewell</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>إنهاء Fadewell</translation>
    </message>
    <message>
        <source>Use System Setting</source>
        <translation>استخدام إعداد النظام</translation>
    </message>
    <message>
        <source>%1 (Not Connected)</source>
        <translation>%1 (غير متصل)</translation>
    </message>
    <message>
        <source>Lowers other apps when a call starts.</source>
        <translation>يخفض صوت التطبيقات الأخرى عند بدء مكالمة.</translation>
    </message>
    <message>
        <source>On during your call in %1.</source>
        <translation>مفعّل أثناء مكالمتك في %1.</translation>
    </message>
    <message>
        <source>On until you turn it off.</source>
        <translation>مفعّل حتى تعطّله.</translation>
    </message>
    <message>
        <source>Off for all apps.</source>
        <translation>معطّل لكل التطبيقات.</translation>
    </message>
    <message>
        <source>No Microphone</source>
        <translation>لا يوجد ميكروفون</translation>
    </message>
    <message>
        <source>In use by %1.</source>
        <translation>يستخدمه %1.</translation>
    </message>
</context>
<context>
    <name>fadewell::PlatformTexts</name>
    <message>
        <source>Show in Menu Bar</source>
        <translation>الإظهار في شريط القوائم</translation>
    </message>
    <message>
        <source>Show in System Tray</source>
        <translation>الإظهار في علبة النظام</translation>
    </message>
    <message>
        <source>Allow Fadewell under Login Items in System Settings.</source>
        <translation>اسمح لـ Fadewell ضمن «عناصر تسجيل الدخول» في إعدادات النظام.</translation>
    </message>
    <message>
        <source>Allow Fadewell under Autostart in System Settings.</source>
        <translation>اسمح لـ Fadewell ضمن «التشغيل التلقائي» في إعدادات النظام.</translation>
    </message>
    <message>
        <source>Needed to change the volume of apps. Sound is processed on your Mac and is never saved or sent.</source>
        <translation>مطلوب لتغيير مستوى صوت التطبيقات. تتم معالجة الصوت على جهاز Mac ولا يُحفظ أو يُرسل أبدًا.</translation>
    </message>
    <message>
        <source>Needed to change the volume of apps. Sound is processed on your computer and is never saved or sent.</source>
        <translation>مطلوب لتغيير مستوى صوت التطبيقات. تتم معالجة الصوت على حاسوبك ولا يُحفظ أو يُرسل أبدًا.</translation>
    </message>
    <message>
        <source>Call mode turns on by itself when a call app uses the microphone. You can always turn it on or off in the menu bar.</source>
        <translation>يعمل وضع المكالمات تلقائيًا عندما يستخدم تطبيق مكالمات الميكروفون. يمكنك دائمًا تشغيله أو إيقافه من شريط القوائم.</translation>
    </message>
    <message>
        <source>Call mode turns on by itself when a call app uses the microphone. You can always turn it on or off in the mixer.</source>
        <translation>يعمل وضع المكالمات تلقائيًا عندما يستخدم تطبيق مكالمات الميكروفون. يمكنك دائمًا تشغيله أو إيقافه في المازج.</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell needs the sound it plays. macOS calls this System Audio Recording. Sound is processed on your Mac and is never saved or sent.</source>
        <translation>لتغيير مستوى صوت تطبيق، يحتاج Fadewell إلى الصوت الذي يشغّله. يسمي macOS ذلك «تسجيل صوت النظام». تتم معالجة الصوت على جهاز Mac ولا يُحفظ أو يُرسل أبدًا.</translation>
    </message>
    <message>
        <source>To change an app’s volume, Fadewell needs the sound it plays. The sound system, PipeWire, has to allow this. Sound is processed on your computer and is never saved or sent.</source>
        <translation>لتغيير مستوى صوت تطبيق، يحتاج Fadewell إلى الصوت الذي يشغّله. يجب أن يسمح نظام الصوت PipeWire بذلك. تتم معالجة الصوت على حاسوبك ولا يُحفظ أو يُرسل أبدًا.</translation>
    </message>
    <message>
        <source>Answer the question from macOS.</source>
        <translation>أجب عن سؤال macOS.</translation>
    </message>
    <message>
        <source>Waiting for the sound system to allow it.</source>
        <translation>بانتظار سماح نظام الصوت.</translation>
    </message>
    <message>
        <source>You can allow it later in System Settings ▸ Privacy &amp; Security ▸ Screen &amp; System Audio Recording.</source>
        <translation>يمكنك السماح لاحقًا في إعدادات النظام ▸ الخصوصية والأمن ▸ تسجيل الشاشة وصوت النظام.</translation>
    </message>
    <message>
        <source>You can allow it later: Settings ▸ General ▸ Permissions tells how.</source>
        <translation>يمكنك السماح لاحقًا: الإعدادات ▸ عام ▸ الأذونات توضح الطريقة.</translation>
    </message>
    <message>
        <source>Fadewell is in the menu bar. Click %1 to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>Fadewell في شريط القوائم. انقر %1 لتغيير مستوى صوت كل تطبيق. يمكنك ضبط اختصارات لوحة المفاتيح في الإعدادات.</translation>
    </message>
    <message>
        <source>Fadewell is in the system tray. Click %1 to change the volume of each app. You can set keyboard shortcuts in Settings.</source>
        <translation>Fadewell في علبة النظام. انقر %1 لتغيير مستوى صوت كل تطبيق. يمكنك ضبط اختصارات لوحة المفاتيح في الإعدادات.</translation>
    </message>
</context>
<context>
    <name>fadewell::RecorderField</name>
    <message>
        <source>Settings…</source>
        <translation>الإعدادات…</translation>
    </message>
    <message>
        <source>Quit Fadewell</source>
        <translation>إنهاء Fadewell</translation>
    </message>
</context>
<context>
    <name>fadewell::RememberedAppsModel</name>
    <message>
        <source>Muted</source>
        <translation>مكتوم</translation>
    </message>
    <message>
        <source>Other Output</source>
        <translation>مخرج آخر</translation>
    </message>
</context>
<context>
    <name>fadewell::ShortcutsPaneModel</name>
    <message>
        <source>None</source>
        <translation>لا شيء</translation>
    </message>
</context>
</TS>
