#include <keld-transl/transl_tk.h>

#include <iostream>

int main()
{
    transl_tk::Pool::construct("host");
    transl_tk::Point3D::create(0, 1.0, 2.0, 3.0);
    transl_tk::Point3D::create(0, 4.0, 5.0, 6.0);
    std::cout << transl_tk::Pool::getInstance()->getSize() << "\n";
    transl_tk::Pool::destruct();
}
