#include "component/files/leitor_linhas.hpp"

#include <algorithm>
#include <cstring>
#include <system_error>

#include "component/files/caminhos.hpp"
#include "component/shared/texto.hpp"

namespace quorv {

LeitorLinhas::LeitorLinhas() : buffer_(new char[kBuffer]) {
  cabeca_.reserve(kGuardado);
}

LeitorLinhas::~LeitorLinhas() {
  Fechar();
}

bool LeitorLinhas::Abrir(std::string_view caminhoUtf8, std::uint64_t limite) {
  Fechar();
  limite_ = limite;
  const std::filesystem::path caminho = caminhos::Caminho(caminhoUtf8);
  std::error_code erro;
  if (caminhoUtf8.empty() || !std::filesystem::is_regular_file(caminho, erro)) return false;
#ifdef _WIN32
  arquivo_ = _wfopen(caminho.c_str(), L"rb");
#else
  arquivo_ = std::fopen(caminho.c_str(), "rb");
#endif
  if (arquivo_ == nullptr) return false;
  const std::uintmax_t tamanho = std::filesystem::file_size(caminho, erro);
  tamanho_ = erro ? 0 : tamanho;
  inicio_ = fim_ = 0;
  lidos_ = 0;
  esgotado_ = false;
  return true;
}

void LeitorLinhas::Fechar() {
  if (arquivo_ != nullptr) std::fclose(arquivo_);
  arquivo_ = nullptr;
  esgotado_ = true;
  inicio_ = fim_ = 0;
}

bool LeitorLinhas::Reabastece() {
  if (esgotado_) return false;
  if (inicio_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + inicio_, fim_ - inicio_);
    fim_ -= inicio_;
    inicio_ = 0;
  }
  const std::size_t lidos = std::fread(buffer_.get() + fim_, 1, kBuffer - fim_, arquivo_);
  // A read error ends the file as its end does: what was read stays readable.
  if (lidos == 0) esgotado_ = true;
  fim_ += lidos;
  lidos_ += lidos;
  return lidos > 0;
}

bool LeitorLinhas::Fim() {
  return inicio_ == fim_ && !Reabastece();
}

bool LeitorLinhas::Proxima(Linha& linha) {
  if (Fim()) return false;
  for (;;) {
    const char* inicio = buffer_.get() + inicio_;
    const std::size_t disponivel = fim_ - inicio_;
    const char* quebra = texto::ProcuraByte(inicio, disponivel, '\n');
    if (quebra != nullptr) {
      std::size_t tamanho = static_cast<std::size_t>(quebra - inicio);
      inicio_ += tamanho + 1;
      if (tamanho > 0 && inicio[tamanho - 1] == '\r') --tamanho;
      linha.texto = std::string_view(inicio, tamanho);
      linha.comprimento = tamanho;
      return true;
    }
    // The line's bytes, a CR and the LF fill the window of a line at the limit.
    if (limite_ != kSemLimite && disponivel >= limite_ + 2) return LinhaAlemDoLimite(linha);
    if (disponivel == kBuffer) return LinhaLonga(linha);
    if (!Reabastece()) {
      linha.texto = std::string_view(buffer_.get() + inicio_, fim_ - inicio_);
      linha.comprimento = fim_ - inicio_;
      inicio_ = fim_;
      return true;
    }
  }
}

// A line that runs past the limit: its head, the length seen so far, and the end of the file.
bool LeitorLinhas::LinhaAlemDoLimite(Linha& linha) {
  const std::size_t disponivel = fim_ - inicio_;
  cabeca_.assign(buffer_.get() + inicio_, std::min(disponivel, kGuardado));
  linha.texto = cabeca_;
  linha.comprimento = disponivel;
  inicio_ = fim_;
  esgotado_ = true;
  return true;
}

bool LeitorLinhas::ProximaEmPedacos(const std::function<void(std::string_view)>& pedaco) {
  if (Fim()) return false;
  // A CR at the end of what the buffer holds belongs to the line end only when an LF follows.
  bool crPendente = false;
  for (;;) {
    const char* inicio = buffer_.get() + inicio_;
    const std::size_t disponivel = fim_ - inicio_;
    const char* quebra = texto::ProcuraByte(inicio, disponivel, '\n');
    if (quebra != nullptr) {
      std::size_t tamanho = static_cast<std::size_t>(quebra - inicio);
      inicio_ += tamanho + 1;
      if (crPendente && tamanho > 0) pedaco("\r");
      if (tamanho > 0 && inicio[tamanho - 1] == '\r') --tamanho;
      if (tamanho > 0) pedaco(std::string_view(inicio, tamanho));
      return true;
    }
    if (crPendente) pedaco("\r");
    crPendente = disponivel > 0 && inicio[disponivel - 1] == '\r';
    const std::size_t entregue = crPendente ? disponivel - 1 : disponivel;
    if (entregue > 0) pedaco(std::string_view(inicio, entregue));
    inicio_ = fim_;
    if (!Reabastece()) {
      // A last line without an end keeps its CR.
      if (crPendente) pedaco("\r");
      return true;
    }
  }
}

// A line longer than the buffer: keep its head, count the rest as it streams past.
bool LeitorLinhas::LinhaLonga(Linha& linha) {
  cabeca_.assign(buffer_.get(), kGuardado);
  std::uint64_t comprimento = fim_ - inicio_;
  bool terminaEmCR = buffer_[fim_ - 1] == '\r';
  inicio_ = fim_;
  while (Reabastece()) {
    const char* inicio = buffer_.get() + inicio_;
    const std::size_t disponivel = fim_ - inicio_;
    const char* quebra = texto::ProcuraByte(inicio, disponivel, '\n');
    if (quebra != nullptr) {
      const auto tamanho = static_cast<std::size_t>(quebra - inicio);
      if (tamanho > 0) terminaEmCR = inicio[tamanho - 1] == '\r';
      comprimento += tamanho;
      inicio_ += tamanho + 1;
      if (terminaEmCR) --comprimento;
      linha.texto = cabeca_;
      linha.comprimento = comprimento;
      return true;
    }
    comprimento += disponivel;
    terminaEmCR = inicio[disponivel - 1] == '\r';
    inicio_ = fim_;
  }
  linha.texto = cabeca_;
  linha.comprimento = comprimento;
  return true;
}

}  // namespace quorv
