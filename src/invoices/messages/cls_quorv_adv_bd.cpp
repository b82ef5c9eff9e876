// The producer-invoice warnings reader: the record type (columns 9-10) and the invoice number
// area (columns 11-30) of the copied input line, and the invoice catalogue's texts.
#include "invoices/messages/cls_quorv_adv_bd.hpp"

#include "component/files/leitor_advertencias.hpp"
#include "invoices/messages/catalogo_notas.hpp"

namespace quorv {
namespace {

constexpr FormatoAdvertencias kFormatoNotas{{9, 2}, {11, 20}, &notas::TextoAdvertencia};

}  // namespace

clsQuorvAdvBD::clsQuorvAdvBD() : leitor_(std::make_unique<LeitorAdvertencias>(kFormatoNotas)) {}

clsQuorvAdvBD::~clsQuorvAdvBD() = default;

void clsQuorvAdvBD::OpenStream(const std::string& psFilePath) {
  try {
    leitor_->Abrir(psFilePath);
  } catch (...) {
    // A failure while opening leaves what could be done; the reader raises nothing here.
  }
}

void clsQuorvAdvBD::CloseStream() {
  leitor_->Fechar();
}

void clsQuorvAdvBD::MoveNext() {
  try {
    leitor_->Avancar();
  } catch (...) {
    // A failure while reading leaves the items as they stood.
  }
}

bool clsQuorvAdvBD::EndOfStream() const {
  return leitor_->Fim();
}

std::string clsQuorvAdvBD::TR() const {
  return leitor_->Tr();
}

std::string clsQuorvAdvBD::Nota() const {
  return leitor_->Nota();
}

int32_t clsQuorvAdvBD::LINHA() const {
  return leitor_->NumeroLinha();
}

std::string clsQuorvAdvBD::Descricao() const {
  return leitor_->Descricao();
}

int32_t clsQuorvAdvBD::TotalRecords() const {
  return leitor_->Total();
}

int32_t clsQuorvAdvBD::RecordCount() const {
  // Unlike the form reader's, the invoice reader's position raises nothing: without a stream it is
  // 0.
  return leitor_->Aberto() ? leitor_->Posicao() : 0;
}

}  // namespace quorv
