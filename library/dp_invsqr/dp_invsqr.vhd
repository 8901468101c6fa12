-- One over the square root of an IEEE double, within 0.57 ulp. Subnormal operands are zero; zero gives infinity with
-- its sign, infinity gives 0, a negative operand nan.
--   step arrive:    the operand, in cycles that the steps behind have no use for
--   step look_up:   coefficients of the segment: 1 / sqrt(m), or 1 / sqrt(2 m) below an odd power of two, is
--                   level - slope * u + curve * u ** 2
--   step bend:      slope less curve times position
--   step fall:      level less that times position: a guess of the root's reciprocal, too small by less than 2 ** -28
--   step root:      significand times guess
--   step residual:  that times guess; what it lacks of 1 is twice the guess's relative error
--   step correct:   guess times error
--   step add:       both, and half a unit of the result, so that the lower bits are dropped
--   step pack:      the value of 2 goes into the exponent; marks
-- Latency 32 + 2 doublespeed - device (1 + doublespeed) cycles, 30 to 34. The generics change no result. README.md has
-- the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity dp_invsqr is
  generic (doubleaccuracy : natural;
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
end dp_invsqr;

architecture rtl of dp_invsqr is
  constant exponent_bits    : positive := 11;
  constant fraction_bits    : positive := 52;
  constant significand_bits : positive := fraction_bits + 1;
  constant operand_bits     : positive := 1 + exponent_bits + fraction_bits;
  constant wide_bits        : positive := exponent_bits + 2;   -- as xfc_pack_ieee asks for
  constant mark_bits        : positive := 4;        -- sign, nan, zip, sat
  constant segment_bits     : positive := 8;        -- without the parity
  constant position_bits    : positive := 25;       -- those that count
  constant short_bits       : positive := 17;       -- of these for the curve
  constant level_bits       : positive := 34;       -- behind the point
  constant slope_bits       : positive := 25;
  constant curve_bits       : positive := 17;
  constant row_bits         : positive := level_bits + slope_bits + curve_bits;
  constant guess_bits       : positive := 32;       -- of the level, that are kept
  constant significand_product_bits : positive := significand_bits + guess_bits;
  constant root_bits        : positive := 64;       -- of these, that are kept
  constant product_bits     : positive := root_bits + guess_bits;
  constant error_bits       : positive := 32;
  constant error_low        : positive := 36;       -- lowest bit of the product that counts
  constant rise_bits        : positive := 32;       -- of guess times error, that are kept
  constant sum_bits         : positive := 60;       -- behind the point

  constant extra            : natural := (2 - device) * (doublespeed + 1);
  constant arrive_cycles    : natural := boolean'pos(extra > 1) * (extra - 1);
  constant bend_borders     : natural := 31;
  constant bend_cycles      : natural := 5;
  constant fall_borders     : natural := 31;
  constant fall_cycles      : natural := 5;
  constant root_borders     : natural := 30 + boolean'pos(extra > 0);
  constant root_cycles      : natural := 4 + boolean'pos(extra > 0);
  constant residual_borders : natural := 63;
  constant residual_cycles  : natural := 6;
  constant correct_borders  : natural := 31;
  constant correct_cycles   : natural := 5;
  constant guess_cycle      : natural := 1 + bend_cycles + 1 + fall_cycles + 1;   -- from here on the guess is known
  constant error_cycle      : natural := guess_cycle + root_cycles + residual_cycles;
  constant add_cycle        : natural := error_cycle + correct_cycles;

  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype significand_field is std_logic_vector(significand_bits - 1 downto 0);
  subtype guess_field is std_logic_vector(guess_bits - 1 downto 0);

  -- arrive
  signal arrive_d, operand : std_logic_vector(operand_bits - 1 downto 0);
  signal sign : std_logic;
  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal arrived_fraction : fraction_field;

  -- look_up
  signal zero, top, fractional : std_logic;
  signal marks_d, pack_marks : std_logic_vector(mark_bits - 1 downto 0);
  signal odd_d, odd : std_logic_vector(0 downto 0);
  signal index : std_logic_vector(segment_bits downto 0);
  signal row_d, row : std_logic_vector(row_bits - 1 downto 0);
  signal position : std_logic_vector(position_bits - 1 downto 0);
  signal twice_d : std_logic_vector(exponent_bits downto 0);
  signal pack_exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal early_fraction : fraction_field;

  -- bend, fall
  signal level : std_logic_vector(level_bits - 1 downto 0);
  signal guess : guess_field;

  -- root
  signal early_significand : significand_field;
  signal significand_product : std_logic_vector(significand_product_bits - 1 downto 0);
  signal root : std_logic_vector(root_bits - 1 downto 0);
  signal root_guess : guess_field;

  -- residual
  signal product : std_logic_vector(product_bits - 1 downto 0);
  signal error : std_logic_vector(error_bits - 1 downto 0);
  signal early_guess : guess_field;

  -- correct, add
  signal rounded : std_logic_vector(significand_bits downto 0);

  -- pack
  signal result_exponent : std_logic_vector(wide_bits - 1 downto 0);
  signal packed_d, packed : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert doubleaccuracy <= 1 report "dp_invsqr: doubleaccuracy is 0 or 1" severity failure;
  assert doublespeed <= 1 report "dp_invsqr: doublespeed is 0 or 1" severity failure;
  assert device <= 2 report "dp_invsqr: device is 0 to 2" severity failure;
  assert synthesize <= 1 report "dp_invsqr: synthesize is 0 or 1" severity failure;

  -- arrive
  arrive_d <= signin & exponentin & mantissain;
  arrive_0 : entity work.xfc_registers generic map (operand_bits, arrive_cycles)
    port map (sysclk, enable, arrive_d, operand);
  sign <= operand(operand_bits - 1);
  exponent <= operand(operand_bits - 2 downto fraction_bits);
  arrived_fraction <= operand(fraction_bits - 1 downto 0);

  -- look_up: an even power of two has an odd exponent field
  zero <= '1' when unsigned(exponent) = 0 else '0';
  top <= '1' when unsigned(not exponent) = 0 else '0';
  fractional <= '1' when unsigned(arrived_fraction) /= 0 else '0';
  marks_d <= sign & ((top and fractional) or (sign and not zero)) & top & zero;
  odd_d(0) <= not exponent(0);
  index <= odd_d & arrived_fraction(fraction_bits - 1 downto fraction_bits - segment_bits);
  coefficients : entity work.dp_invsqr_table port map (index, row_d);
  position <=
    arrived_fraction(fraction_bits - segment_bits - 1 downto fraction_bits - segment_bits - position_bits);
  twice_d <= std_logic_vector(to_unsigned(3068, exponent_bits + 1) - unsigned(exponent));

  look_up_0 : entity work.xfc_register generic map (row_bits, 1) port map (sysclk, enable, row_d, row);
  look_up_1 : entity work.xfc_registers generic map (mark_bits, add_cycle + 1)
    port map (sysclk, enable, marks_d, pack_marks);
  look_up_2 : entity work.xfc_registers generic map (exponent_bits, add_cycle + 1)
    port map (sysclk, enable, twice_d(exponent_bits downto 1), pack_exponent);
  look_up_3 : entity work.xfc_registers generic map (fraction_bits, guess_cycle - 1)
    port map (sysclk, enable, arrived_fraction, early_fraction);
  look_up_4 : entity work.xfc_registers generic map (1, error_cycle) port map (sysclk, enable, odd_d, odd);

  -- bend, fall
  fall : entity work.xfc_quadratic
    generic map (position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    port map (sysclk, enable, position, row, level);
  guess <= level(level_bits - 1 downto level_bits - guess_bits);

  -- root
  early_significand <= '1' & early_fraction;
  root_product : entity work.xfc_early_product generic map (significand_bits, guess_bits, root_borders, synthesize)
    port map (sysclk, enable, early_significand, guess, significand_product);
  root <= significand_product(significand_product_bits - 1 downto significand_product_bits - root_bits);

  root_0 : entity work.xfc_registers generic map (guess_bits, root_cycles - 1)
    port map (sysclk, enable, guess, root_guess);

  -- residual: what the bits of the product from error_low on lack of 1, less one unit at most
  residual : entity work.xfc_early_product generic map (guess_bits, root_bits, residual_borders, synthesize)
    port map (sysclk, enable, root_guess, root, product);
  error <= not product(error_low + error_bits - 2 downto error_low - 1) when odd(0) = '1' else
           not product(error_low + error_bits - 1 downto error_low);

  residual_0 : entity work.xfc_registers generic map (guess_bits, residual_cycles)
    port map (sysclk, enable, root_guess, early_guess);

  -- correct, add
  add : entity work.xfc_newton_add
    generic map (guess_bits, error_bits, rise_bits, sum_bits, significand_bits, correct_borders, synthesize)
    port map (sysclk, enable, early_guess, error, rounded);

  -- pack
  result_exponent <=
    std_logic_vector(resize(unsigned(pack_exponent), wide_bits) +
                     unsigned(rounded(significand_bits downto significand_bits)));
  pack_result : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (result_exponent, rounded(fraction_bits - 1 downto 0), pack_marks, packed_d);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed);
  signout <= packed(operand_bits - 1);
  exponentout <= packed(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed(fraction_bits - 1 downto 0);
end rtl;
