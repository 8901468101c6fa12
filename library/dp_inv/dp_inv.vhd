-- The reciprocal of an IEEE double, within 0.52 ulp. Subnormal operands and results are zero, 1 / 0 is infinite, both
-- with the operand's sign.
--   step look_up:   coefficients of the significand's segment, 1 / m being level - slope * u + curve * u ** 2
--   step bend:      slope less curve times position
--   step fall:      level less that times position: a guess of 1 / m, too small by less than 2 ** -29
--   step residual:  significand times guess; what that lacks of 1 is the guess's relative error
--   step correct:   guess times error
--   step add:       both, and half a unit of the result, so that the lower bits are dropped
--   step pack:      the value of 2 goes into the exponent; marks
-- Latency 20 + 2 doublespeed + (roundconvert - device) (1 + doublespeed) cycles, 18 to 24: the more there are, the more
-- borders the products have. The generics change no result. README.md has the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity dp_inv is
  generic (roundconvert   : natural;
           doubleaccuracy : natural;
           doublespeed    : natural;
           device         : natural;
           synthesize     : natural);
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(11 downto 1);
        mantissain  : in std_logic_vector(52 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_inv;

architecture rtl of dp_inv is
  constant exponent_bits    : positive := 11;
  constant fraction_bits    : positive := 52;
  constant significand_bits : positive := fraction_bits + 1;
  constant operand_bits     : positive := 1 + exponent_bits + fraction_bits;
  constant wide_bits        : positive := exponent_bits + 2;   -- exponent below zero
  constant mark_bits        : positive := 4;        -- sign, nan, zip, sat
  constant segment_bits     : positive := 9;
  constant position_bits    : positive := 25;       -- those that count
  constant short_bits       : positive := 16;       -- of these for the curve
  constant level_bits       : positive := 34;       -- behind the point
  constant slope_bits       : positive := 25;
  constant curve_bits       : positive := 16;
  constant row_bits         : positive := level_bits + slope_bits + curve_bits;
  constant guess_bits       : positive := 32;       -- of the level, that are kept
  constant product_bits     : positive := significand_bits + guess_bits;
  constant error_bits       : positive := 32;
  constant error_low        : positive := 23;       -- lowest bit of the product that counts
  constant rise_bits        : positive := 31;       -- of guess times error, that are kept
  constant sum_bits         : positive := 60;       -- behind the point

  -- Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  constant extra : natural := (roundconvert - device) * (doublespeed + 1) + 2 * doublespeed + 2;
  constant bend_borders     : natural := 10 + 4 * boolean'pos(extra > 1) + boolean'pos(extra > 5);
  constant bend_cycles      : natural := 2 + boolean'pos(extra > 1) + boolean'pos(extra > 5);
  constant fall_borders     : natural := 22 + 8 * boolean'pos(extra > 0) + boolean'pos(extra > 4);
  constant fall_cycles      : natural := 3 + boolean'pos(extra > 0) + boolean'pos(extra > 4);
  constant residual_borders : natural := 30 + boolean'pos(extra > 2);
  constant residual_cycles  : natural := 4 + boolean'pos(extra > 2);
  constant correct_borders  : natural := 30 + boolean'pos(extra > 3);
  constant correct_cycles   : natural := 4 + boolean'pos(extra > 3);
  constant guess_cycle      : natural := 1 + bend_cycles + 1 + fall_cycles + 1;   -- from here on the guess is known
  constant add_cycle        : natural := guess_cycle + residual_cycles + correct_cycles;

  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype significand_field is std_logic_vector(significand_bits - 1 downto 0);
  subtype guess_field is std_logic_vector(guess_bits - 1 downto 0);

  -- look_up
  signal row_d, row : std_logic_vector(row_bits - 1 downto 0);
  signal position : std_logic_vector(position_bits - 1 downto 0);
  signal zero, top, fractional : std_logic;
  signal marks_d, pack_marks : std_logic_vector(mark_bits - 1 downto 0);
  signal pack_exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal early_fraction : fraction_field;

  -- bend, fall
  signal level : std_logic_vector(level_bits - 1 downto 0);
  signal guess : guess_field;

  -- residual
  signal early_significand : significand_field;
  signal product : std_logic_vector(product_bits - 1 downto 0);
  signal error : std_logic_vector(error_bits - 1 downto 0);
  signal early_guess : guess_field;

  -- correct, add
  signal rounded : std_logic_vector(significand_bits downto 0);

  -- pack
  signal result_exponent : std_logic_vector(wide_bits - 1 downto 0);
  signal packed_d, packed : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert roundconvert <= 1 report "dp_inv: roundconvert is 0 or 1" severity failure;
  assert doubleaccuracy <= 1 report "dp_inv: doubleaccuracy is 0 or 1" severity failure;
  assert doublespeed <= 1 report "dp_inv: doublespeed is 0 or 1" severity failure;
  assert device <= 2 report "dp_inv: device is 0 to 2" severity failure;
  assert synthesize <= 1 report "dp_inv: synthesize is 0 or 1" severity failure;

  -- look_up
  coefficients : entity work.dp_inv_table
    port map (mantissain(fraction_bits downto fraction_bits - segment_bits + 1), row_d);
  position <= mantissain(fraction_bits - segment_bits downto fraction_bits - segment_bits - position_bits + 1);
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  top <= '1' when unsigned(not exponentin) = 0 else '0';
  fractional <= '1' when unsigned(mantissain) /= 0 else '0';
  marks_d <= signin & (top and fractional) & top & zero;

  look_up_0 : entity work.xfc_register generic map (row_bits, 1) port map (sysclk, enable, row_d, row);
  look_up_1 : entity work.xfc_registers generic map (mark_bits, add_cycle + 1)
    port map (sysclk, enable, marks_d, pack_marks);
  look_up_2 : entity work.xfc_registers generic map (exponent_bits, add_cycle + 1)
    port map (sysclk, enable, exponentin, pack_exponent);
  look_up_3 : entity work.xfc_registers generic map (fraction_bits, guess_cycle - 1)
    port map (sysclk, enable, mantissain, early_fraction);

  -- bend, fall
  fall : entity work.xfc_quadratic
    generic map (position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    port map (sysclk, enable, position, row, level);
  guess <= level(level_bits - 1 downto level_bits - guess_bits);

  -- residual: what the bits of the product from error_low on lack of 1, less one unit at most
  early_significand <= '1' & early_fraction;
  residual : entity work.xfc_early_product
    generic map (significand_bits, guess_bits, residual_borders, synthesize)
    port map (sysclk, enable, early_significand, guess, product);
  error <= not product(error_low + error_bits - 1 downto error_low);

  residual_0 : entity work.xfc_registers generic map (guess_bits, residual_cycles - 1)
    port map (sysclk, enable, guess, early_guess);

  -- correct, add
  add : entity work.xfc_newton_add
    generic map (guess_bits, error_bits, rise_bits, sum_bits, significand_bits, correct_borders, synthesize)
    port map (sysclk, enable, early_guess, error, rounded);

  -- pack
  result_exponent <=
    std_logic_vector(to_unsigned(2045, wide_bits) - resize(unsigned(pack_exponent), wide_bits) +
                     unsigned(rounded(significand_bits downto significand_bits)));
  pack_result : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (result_exponent, rounded(fraction_bits - 1 downto 0), pack_marks, packed_d);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed);
  signout <= packed(operand_bits - 1);
  exponentout <= packed(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed(fraction_bits - 1 downto 0);
end rtl;
