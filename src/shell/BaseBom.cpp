#include "shell/BaseBom.h"

#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

BaseBom::BaseBom() : workPart(NXOpen::Session::GetSession()->Parts()->Work())
{
}

BaseBom::~BaseBom()
{
}
