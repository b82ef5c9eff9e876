// The shared field routines and the warning line, one field or one warning at a time.
#include <benchmark/benchmark.h>

#include "component/files/linha_advertencia.hpp"
#include "component/shared/datas.hpp"
#include "component/shared/documentos.hpp"
#include "component/shared/texto.hpp"

namespace quorv {
namespace {

void Numero(benchmark::State& estado, const char* campo) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(texto::Numero(campo));
}
BENCHMARK_CAPTURE(Numero, valor_de_13_digitos, "0000000010000");
BENCHMARK_CAPTURE(Numero, com_brancos_e_virgula, "   1234,56  ");
BENCHMARK_CAPTURE(Numero, de_20_digitos, "12345678901234567890");
BENCHMARK_CAPTURE(Numero, nao_numerico, "12345A");

void ValorInicial(benchmark::State& estado) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(texto::ValorInicial("00000123"));
}
BENCHMARK(ValorInicial);

void ConverteData(benchmark::State& estado, const char* campo) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(datas::ConverteData(campo));
}
BENCHMARK_CAPTURE(ConverteData, data_valida, "20240110");
BENCHMARK_CAPTURE(ConverteData, zeros, "00000000");
BENCHMARK_CAPTURE(ConverteData, invalida, "20240230");

void ValidaCNPJ(benchmark::State& estado) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(documentos::ValidaCNPJ("11222333000181"));
}
BENCHMARK(ValidaCNPJ);

void ValidaCPF(benchmark::State& estado) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(documentos::ValidaCPF("12345678909"));
}
BENCHMARK(ValidaCPF);

void MascaraZeros(benchmark::State& estado) {
  for (auto _ : estado)
    benchmark::DoNotOptimize(texto::MascaraZeros("12", 8));
}
BENCHMARK(MascaraZeros);

// A warning line of a 160-character record, numbered from the record or by the caller.
void MontaAdvertencia(benchmark::State& estado, double numero) {
  LinhaAdvertencia linha;
  linha.Prepara("#", 123, 0);
  const std::string registro = "00001234" + std::string(152, 'X');
  for (auto _ : estado)
    benchmark::DoNotOptimize(linha.Monta(111, registro, numero));
}
BENCHMARK_CAPTURE(MontaAdvertencia, numero_do_registro, 0.0);
BENCHMARK_CAPTURE(MontaAdvertencia, numero_do_contador, 1234.0);

}  // namespace
}  // namespace quorv
