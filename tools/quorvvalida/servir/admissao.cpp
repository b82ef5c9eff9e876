#include "admissao.hpp"

#include <algorithm>
#include <cmath>

namespace quorv::servico {

Admissao::Admissao(std::size_t trabalhadores, std::size_t fila)
    : trabalhadores_(std::max<std::size_t>(trabalhadores, 1)), fila_(fila) {}

std::optional<Admissao::Vaga> Admissao::Reserva() {
  std::lock_guard<std::mutex> trava(trava_);
  if (admitidas_ >= trabalhadores_ + fila_) return std::nullopt;
  ++admitidas_;
  return Vaga(this);
}

bool Admissao::TemVaga() const {
  std::lock_guard<std::mutex> trava(trava_);
  return admitidas_ < trabalhadores_ + fila_;
}

Admissao::Estado Admissao::Consulta() const {
  std::lock_guard<std::mutex> trava(trava_);
  return {trabalhadores_, fila_, admitidas_, esperando_.size(), validando_};
}

std::int64_t Admissao::SegundosParaTentarDeNovo() const {
  std::lock_guard<std::mutex> trava(trava_);
  const double frente = static_cast<double>(admitidas_) / static_cast<double>(trabalhadores_);
  return std::clamp<std::int64_t>(static_cast<std::int64_t>(std::ceil(frente * duracaoMedia_)), 1,
                                  3600);
}

void Admissao::Libera(bool validando, std::chrono::steady_clock::duration duracao) {
  {
    std::lock_guard<std::mutex> trava(trava_);
    --admitidas_;
    if (validando) {
      --validando_;
      const double segundos = std::chrono::duration<double>(duracao).count();
      duracaoMedia_ = 0.8 * duracaoMedia_ + 0.2 * segundos;
    }
  }
  livre_.notify_all();
}

Admissao::Vaga::Vaga(Vaga&& outra) noexcept
    : admissao_(outra.admissao_), validando_(outra.validando_), inicio_(outra.inicio_) {
  outra.admissao_ = nullptr;
}

Admissao::Vaga::~Vaga() {
  if (admissao_ != nullptr) {
    admissao_->Libera(validando_, std::chrono::steady_clock::now() - inicio_);
  }
}

void Admissao::Vaga::AguardaTrabalhador() {
  if (admissao_ == nullptr || validando_) return;
  Admissao& a = *admissao_;
  std::unique_lock<std::mutex> trava(a.trava_);
  const std::uint64_t senha = a.proximaSenha_++;
  a.esperando_.push_back(senha);
  a.livre_.wait(trava,
                [&] { return a.esperando_.front() == senha && a.validando_ < a.trabalhadores_; });
  a.esperando_.pop_front();
  ++a.validando_;
  validando_ = true;
  inicio_ = std::chrono::steady_clock::now();
  trava.unlock();
  // The next in line may find a worker free as well.
  a.livre_.notify_all();
}

}  // namespace quorv::servico
