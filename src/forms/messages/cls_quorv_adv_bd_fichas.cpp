// The registration-form warnings reader: the record type (columns 9-11) and the request number
// (columns 12-21) of the copied input line, and the form catalogue's texts.
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"

#include "component/files/leitor_advertencias.hpp"
#include "forms/messages/catalogo_fichas.hpp"

namespace quorv {
namespace {

constexpr FormatoAdvertencias kFormatoFichas{{9, 3}, {12, 10}, &fichas::TextoAdvertencia};

}  // namespace

clsQuorvAdvBDFichas::clsQuorvAdvBDFichas()
    : leitor_(std::make_unique<LeitorAdvertencias>(kFormatoFichas)) {}

clsQuorvAdvBDFichas::~clsQuorvAdvBDFichas() = default;

void clsQuorvAdvBDFichas::OpenStream(const std::string& psFilePath) {
  try {
    leitor_->Abrir(psFilePath);
  } catch (...) {
    // A failure while opening leaves what could be done; the reader raises nothing here.
  }
}

void clsQuorvAdvBDFichas::CloseStream() {
  leitor_->Fechar();
}

void clsQuorvAdvBDFichas::MoveNext() {
  try {
    leitor_->Avancar();
  } catch (...) {
    // A failure while reading leaves the items as they stood.
  }
}

bool clsQuorvAdvBDFichas::EndOfStream() const {
  return leitor_->Fim();
}

std::string clsQuorvAdvBDFichas::TR() const {
  return leitor_->Tr();
}

std::string clsQuorvAdvBDFichas::Nota() const {
  return leitor_->Nota();
}

int32_t clsQuorvAdvBDFichas::LINHA() const {
  return leitor_->NumeroLinha();
}

std::string clsQuorvAdvBDFichas::Descricao() const {
  return leitor_->Descricao();
}

int32_t clsQuorvAdvBDFichas::TotalRecords() const {
  return leitor_->Total();
}

int32_t clsQuorvAdvBDFichas::RecordCount() const {
  return leitor_->Posicao();
}

}  // namespace quorv
