#include "ai_filter/onnx_network.h"

#include <cstring>

namespace krv::test {
namespace {

// A message of the file format: fields, each with its number. The numbers and types are those of
// onnx.proto, named beside each use.
class Message {
 public:
  Message& Number(int field, uint64_t value) {
    Variable(static_cast<uint64_t>(field) << 3);
    Variable(value);
    return *this;
  }
  Message& Bytes(int field, const std::string& bytes) {
    Variable((static_cast<uint64_t>(field) << 3) | 2);
    Variable(bytes.size());
    bytes_ += bytes;
    return *this;
  }
  Message& Part(int field, const Message& part) { return Bytes(field, part.bytes_); }
  const std::string& bytes() const { return bytes_; }

 private:
  void Variable(uint64_t value) {
    for (; value >= 128; value >>= 7) bytes_ += static_cast<char>(value | 128);
    bytes_ += static_cast<char>(value);
  }

  std::string bytes_;
};

constexpr int kFloatElements = 1;
constexpr int kInt64Elements = 7;

template <class Value>
Message Tensor(const std::string& name, int type, const std::vector<int64_t>& sizes,
               const std::vector<Value>& values) {
  Message tensor;
  for (const int64_t size : sizes) tensor.Number(1, static_cast<uint64_t>(size));  // dims
  tensor.Number(2, static_cast<uint64_t>(type));                                   // data_type
  tensor.Bytes(8, name);
  std::string raw(values.size() * sizeof(Value), '\0');
  std::memcpy(raw.data(), values.data(), raw.size());
  return tensor.Bytes(9, raw);  // raw_data
}

Message Integers(const std::string& name, const std::vector<int64_t>& values) {
  constexpr int kIntegers = 7;
  Message attribute;
  attribute.Bytes(1, name);
  for (const int64_t value : values) attribute.Number(8, static_cast<uint64_t>(value));  // ints
  return attribute.Number(20, kIntegers);                                                // type
}

// A picture of any size.
Message Value(const std::string& name, uint64_t planes) {
  Message shape;
  shape.Part(1, Message().Number(1, 1));  // dim, dim_value
  shape.Part(1, Message().Number(1, planes));
  shape.Part(1, Message().Bytes(2, "height"));  // dim_param
  shape.Part(1, Message().Bytes(2, "width"));
  Message tensor;
  tensor.Number(1, kFloatElements).Part(2, shape);  // elem_type, shape
  return Message().Bytes(1, name).Part(2, Message().Part(1, tensor));
}

Message Node(const std::string& type, const std::vector<std::string>& inputs,
             const std::string& output) {
  Message node;
  for (const std::string& input : inputs) node.Bytes(1, input);
  return node.Bytes(2, output).Bytes(3, type).Bytes(4, type);  // output, name, op_type
}

}  // namespace

std::string OnnxFile(const OnnxNetwork& network) {
  const auto planes = static_cast<int64_t>(network.planes.size());
  std::vector<float> weights;
  std::vector<float> added;
  for (const std::vector<float>& plane : network.planes) {
    weights.insert(weights.end(), plane.begin(), plane.begin() + 3);
    added.push_back(plane[3]);
  }
  const bool any_side = network.side == 0;
  Message convolution = Node("Conv", {"picture", "weights", "added"}, any_side ? "people" : "free");
  convolution.Part(5, Integers("kernel_shape", {1, 1}));
  convolution.Part(5, Integers("strides", {network.step, network.step}));
  Message graph;
  graph.Part(1, convolution);
  if (!any_side) graph.Part(1, Node("Reshape", {"free", "sizes"}, "people"));
  graph.Bytes(2, "network");
  graph.Part(5, Tensor("weights", kFloatElements, {planes, 3, 1, 1}, weights));  // initializer
  graph.Part(5, Tensor("added", kFloatElements, {planes}, added));
  if (!any_side) {
    const std::vector<int64_t> sizes = {1, planes, network.side, network.side};
    graph.Part(5, Tensor("sizes", kInt64Elements, {4}, sizes));
  }
  graph.Part(11, Value("picture", 3));
  graph.Part(12, Value("people", static_cast<uint64_t>(planes)));
  const Message version = Message().Bytes(1, "").Number(2, 11);
  // ir_version, graph, opset_import
  return Message().Number(1, 6).Part(7, graph).Part(8, version).bytes();
}

}  // namespace krv::test
