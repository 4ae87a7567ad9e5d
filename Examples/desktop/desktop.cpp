#include <iostream>

#include "Desktop/Qt/Desktop.h"
#include "Platform/Controls/Controls.h"

using namespace Varnholt;

struct TGreeting : TForm {
    TGreeting() {
        SetCaption(u"Greeting");
        SetBounds(200, 150, 300, 90);
        Name.SetBounds(12, 12, 276, 25);
        Greet.SetBounds(191, 50, 97, 27);
        Greet.SetCaption(u"&Greet");
        Greet.SetDefault(true);
        Greet.SetOnClick([this](TObject*) {
            Application().MessageBox(u"Hello, " + Name.GetText(), GetCaption(), 64);
            Close();
        });
    }

    TEdit& Name = Add<TEdit>(u"edName");
    TButton& Greet = Add<TButton>(u"btGreet");
};

int main(int argc, char** argv) {
    TDesktop desktop(argc, argv);
    TGreeting form;
    if (argc > 1)  // with a name there is nothing to ask
        Application().Post([&] {
            form.Name.SetText(FromUtf8(argv[1]));
            form.Close();
        });
    Application().Run(form);
    std::cout << "Goodbye, " << ToUtf8(form.Name.GetText()) << '\n';
}
